// Who may do what with a file.
#pragma once

#include <string>
#include <sys/types.h>

namespace tarnwell::posix
{

inline constexpr mode_t permissionBits = 0777;

// `mode` without the bits that, on a file without an access list, would let in somebody whom this
// file's list keeps out. With a list, the bits of the group are only an upper bound for many
// entries. If the list can't be read, only the owner's bits are left.
mode_t PlainMode(int descriptor, mode_t mode);
mode_t PlainMode(const std::string& path, mode_t mode);

} // namespace tarnwell::posix
