// Files through the module's interfaces, wherever the module comes from.
#pragma once

#include <tarnwell/pointers.h>
#include <tarnwell/tarnwell.h>

#include <cstdint>
#include <string>

namespace tarnwell::bench
{

// What is read at a time, through the module and without it.
inline constexpr std::uint32_t pieceSize = 64 * 1024;

// A path or an address of ASCII characters, as the module takes it.
std::u16string Widened(const std::string& ascii);

// Opens the file, unlooked for, and reads it to its end; the number of its bytes. Throws if it
// can't be read.
std::uint64_t ReadThrough(IFileSystem* system, const std::u16string& address);

} // namespace tarnwell::bench
