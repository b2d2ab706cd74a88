// Any numbers as a date and a time of day: it is a moment, or it isn't one.
#include "platform/filetime.h"
#include "platform/posix/calendar/filetime.h"
#include "support/target.h"

#include <cstring>
#include <ctime>
#include <limits>
#include <optional>

namespace tarnwell::fuzz
{

namespace
{

constexpr std::uint64_t ticksPerMillisecond = 10'000;
constexpr std::uint64_t ticksPerSecond = 10'000'000;
// From 1601 to 1970, in seconds.
constexpr std::int64_t epochDistance = 11'644'473'600;
constexpr std::uint64_t lastTicks = std::numeric_limits<std::int64_t>::max();

std::optional<std::uint64_t> TicksOf(const SYSTEMTIME& parts)
{
    FILETIME time{};
    if (SystemTimeToFileTime(&parts, &time))
        return TimeOf(time);
    Expect(GetLastError() == ERROR_INVALID_PARAMETER, "what is no moment is a bad argument");
    return std::nullopt;
}

bool IsLeapYear(unsigned year)
{
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

bool IsMoment(const SYSTEMTIME& parts)
{
    constexpr unsigned days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (parts.wYear < 1601 || parts.wYear > 30827 || parts.wMonth < 1 || parts.wMonth > 12)
        return false;
    const unsigned leapDay = parts.wMonth == 2 && IsLeapYear(parts.wYear) ? 1 : 0;
    return parts.wDay >= 1 && parts.wDay <= days[parts.wMonth - 1] + leapDay && parts.wHour < 24 &&
           parts.wMinute < 60 && parts.wSecond < 60 && parts.wMilliseconds < 1000;
}

// Taken apart again, by the C library.
void CheckParts(const SYSTEMTIME& parts, std::uint64_t ticks)
{
    const std::time_t seconds = static_cast<std::int64_t>(ticks / ticksPerSecond) - epochDistance;
    std::tm found{};
    Expect(gmtime_r(&seconds, &found) != nullptr, "a moment is one of the C library's");
    Expect(found.tm_year + 1900 == parts.wYear && found.tm_mon + 1 == parts.wMonth &&
               found.tm_mday == parts.wDay && found.tm_hour == parts.wHour &&
               found.tm_min == parts.wMinute && found.tm_sec == parts.wSecond,
           "a moment is that of its parts");
    Expect(ticks % ticksPerSecond == parts.wMilliseconds * ticksPerMillisecond,
           "milliseconds are kept");
}

void CheckMoment(SYSTEMTIME parts)
{
    const std::optional<std::uint64_t> ticks = TicksOf(parts);
    Expect(ticks.has_value() == IsMoment(parts), "a date of the calendar is a moment, others not");
    if (!ticks)
        return;
    CheckParts(parts, *ticks);
    parts.wDayOfWeek = static_cast<WORD>(~parts.wDayOfWeek);
    Expect(TicksOf(parts) == ticks, "the day of the week doesn't count");
}

// The system's own times, which have no end here.
void CheckSystemTime(std::int64_t seconds, std::uint32_t nanoseconds)
{
    const std::uint64_t ticks = TimeOf(posix::FileTimeOf(seconds, nanoseconds));
    Expect(ticks <= lastTicks, "no time is past the last");
    if (seconds < -epochDistance)
        Expect(ticks == 0, "what is before the first time is the first");
    else if (ticks != lastTicks)
        Expect(static_cast<std::int64_t>(ticks / ticksPerSecond) - epochDistance == seconds &&
                   ticks % ticksPerSecond == nanoseconds / 100,
               "a time is kept to the tick");
    if (seconds < std::numeric_limits<std::int64_t>::max())
        Expect(TimeOf(posix::FileTimeOf(seconds + 1, nanoseconds)) >= ticks, "later is not less");
}

template <class T> T Taken(std::string_view bytes, std::size_t at)
{
    T value{};
    if (at + sizeof value <= bytes.size())
        std::memcpy(&value, bytes.data() + at, sizeof value);
    return value;
}

} // namespace

void Try(std::string_view bytes)
{
    SYSTEMTIME parts = Taken<SYSTEMTIME>(bytes, 0);
    CheckMoment(parts);
    // Most of any numbers are no date: these nearly are.
    parts.wYear = static_cast<WORD>(1590 + parts.wYear % 30000);
    parts.wMonth %= 14;
    parts.wDay %= 33;
    parts.wHour %= 25;
    parts.wMinute %= 61;
    parts.wSecond %= 61;
    parts.wMilliseconds %= 1001;
    CheckMoment(parts);
    constexpr std::uint32_t second = 1'000'000'000;
    CheckSystemTime(Taken<std::int64_t>(bytes, 0), Taken<std::uint32_t>(bytes, 8) % second);
    CheckSystemTime(Taken<std::int64_t>(bytes, 0) >> 24, Taken<std::uint32_t>(bytes, 8) % second);
}

} // namespace tarnwell::fuzz
