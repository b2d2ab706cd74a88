// Who may do what with a file.
#pragma once

#include <string>
#include <sys/types.h>

namespace tarnwell::posix
{

inline constexpr mode_t permissionBits = 0777;

// `mode` less what would let somebody into a file without an access list who is kept out of this
// one by its list: there the bits of the group are a bound for many, and say of nobody that they
// may. If the list can't be read, only the owner's bits are left.
mode_t PlainMode(int descriptor, mode_t mode);
mode_t PlainMode(const std::string& path, mode_t mode);

} // namespace tarnwell::posix
