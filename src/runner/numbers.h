// Numbers and times in the output of clients.
#pragma once

#include "platform/win32.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace tarnwell
{

// The whole number at the start of `text`: white space in front and a sign are allowed, reading
// stops at the first other unit, and it saturates at 32 bits. 0 without a digit.
std::int32_t LeadingNumber(std::u16string_view text);

// The FILETIME of so many seconds of Unix time, as `LeadingNumber` reads them.
std::uint64_t UnixTimeToFileTime(std::u16string_view text);

// The FILETIME of a day and time; nothing if there is no such one.
std::optional<std::uint64_t> FileTimeOf(const SYSTEMTIME& parts);

} // namespace tarnwell
