// Dates as FTP servers write them. Nothing here asks for the time.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace tarnwell::posix
{

// Seconds since 1970, of whatever clock; all below are of one clock.
using Moment = std::int64_t;

struct Clock
{
    int hour = 0;
    int minute = 0;
    int second = 0;
};

// Nothing if there is no such day or time.
std::optional<Moment> MomentOf(int year, int month, int day, const Clock& clock);
// The latest such day and time that is not over a day ahead of `now`.
std::optional<Moment> LatestMoment(int month, int day, const Clock& clock, Moment now);

// Digits only, and at most `most` of them.
std::optional<int> Number(std::string_view text, std::size_t most);
// 1 to 12; nothing if the word is no month's name in a language that is known here.
std::optional<int> MonthOf(std::string_view word);
// "7", "07", "7.", or with the character for day behind it.
std::optional<int> DayOf(std::string_view word);
// "15:04", "3:04", "15:04:05", each with fractions of a second dropped.
std::optional<Clock> ClockOf(std::string_view word);

} // namespace tarnwell::posix
