// Times as the user types them.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace tarnwell::host
{

// Which second of a day is meant where only the day is named.
enum class DayPart
{
    Begin,
    End,
};

// "2026-03-01", "2026-03-01T12:00", "2026-03-01 12:00:30Z": UTC, from 1601 to 9999. In
// 100-nanosecond intervals since 1 January 1601; nothing for what is no such time.
std::optional<std::uint64_t> ParseTime(std::u16string_view text, DayPart part);

} // namespace tarnwell::host
