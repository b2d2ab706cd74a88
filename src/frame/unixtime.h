// Times as clients tell them.
#pragma once

#include <cstdint>
#include <string_view>

namespace tarnwell
{

// The FILETIME of so many seconds of Unix time; 0 for what is no number, and for times that there
// is none for.
std::uint64_t FileTimeOfSeconds(std::string_view text);

// The whole seconds of Unix time of a FILETIME, which may be negative.
std::int64_t SecondsOf(std::uint64_t fileTime);

} // namespace tarnwell
