// Times in the output of clients.
#pragma once

#include "frame/text.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace tarnwell
{

// The FILETIME of so many seconds of Unix time, as `LeadingNumber` reads them.
std::uint64_t UnixTimeToFileTime(std::u16string_view text);

// The FILETIME of a day and time; nothing if there is no such one.
std::optional<std::uint64_t> FileTimeOf(const SYSTEMTIME& parts);

} // namespace tarnwell
