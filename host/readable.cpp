#include "readable.h"

#include "text16.h"

namespace tarnwell::host
{

namespace
{

inline constexpr std::uint64_t ticksPerSecond = 10'000'000;

struct Date
{
    std::uint64_t year;
    std::uint64_t month;
    std::uint64_t day;
};

// The library's calendar ends at the year 32767, and a file time can be later. In the Gregorian
// calendar 400 years have 146097 days; a year is taken to begin in March here, so that the leap
// day is its last one.
Date DateOf(std::uint64_t daysSince1601)
{
    // 1 March 1600 is 306 days before 1 January 1601.
    const std::uint64_t days = daysSince1601 + 306;
    const std::uint64_t era = days / 146097;
    const std::uint64_t dayOfEra = days % 146097;
    const std::uint64_t yearOfEra =
        (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const std::uint64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const std::uint64_t monthFromMarch = (5 * dayOfYear + 2) / 153;
    const std::uint64_t day = dayOfYear - (153 * monthFromMarch + 2) / 5 + 1;
    const std::uint64_t month = monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9;
    return {1600 + era * 400 + yearOfEra + (month <= 2 ? 1 : 0), month, day};
}

std::u16string DayAndTime(std::uint64_t fileTime, char16_t between)
{
    const std::uint64_t seconds = fileTime / ticksPerSecond;
    const Date date = DateOf(seconds / 86400);
    return Padded(date.year, 4) + u"-" + Padded(date.month, 2) + u"-" + Padded(date.day, 2) +
           between + Padded(seconds / 3600 % 24, 2) + u":" + Padded(seconds / 60 % 60, 2) + u":" +
           Padded(seconds % 60, 2);
}

} // namespace

std::u16string IsoTime(std::uint64_t fileTime)
{
    return DayAndTime(fileTime, u'T') + u"." + Padded(fileTime % ticksPerSecond, 7) + u"Z";
}

std::u16string ReadableTime(std::uint64_t fileTime)
{
    return fileTime == 0 ? u"-" : DayAndTime(fileTime, u' ') + u"Z";
}

std::u16string ReadableSize(std::uint64_t bytes)
{
    static constexpr const char16_t* units[] = {u" KiB", u" MiB", u" GiB",
                                                u" TiB", u" PiB", u" EiB"};
    if (bytes < 1024)
        return Decimal(bytes) + u" B";
    // Tenths are cut, not rounded: 1023.99 KiB must not become 1024.0 KiB.
    std::size_t unit = 0;
    std::uint64_t rest = bytes;
    while (rest >= std::uint64_t{1024} * 1024)
    {
        rest /= 1024;
        ++unit;
    }
    return Decimal(rest / 1024) + u"." + Decimal(rest % 1024 * 10 / 1024) + units[unit];
}

} // namespace tarnwell::host
