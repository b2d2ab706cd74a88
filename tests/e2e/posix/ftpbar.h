// Large files on FTP servers, and what the host program shows of them on their way.
#pragma once

#include "e2e/posix/terminalrun.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace tarnwell::test
{

// More than any transfer has done before somebody has seen its bar; of a hole in a file.
inline constexpr std::uint64_t largeSize = std::uint64_t{8} << 30;

// A file of `largeSize` bytes, which take no place.
void MakeLarge(const std::filesystem::path& path);

// A bar with bytes, rate and a part of the whole, as a regular expression.
std::string BarFor(const std::string& address);

bool Shows(const std::string& shown, const std::string& pattern);

// Gives Ctrl-C, once, when this pattern is among the first that is seen.
TerminalRun RunUntil(const std::string& pattern, const std::vector<std::string>& arguments);

} // namespace tarnwell::test
