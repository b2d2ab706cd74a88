#include "times.h"

#include <algorithm>
#include <chrono>

namespace tarnwell::host
{

namespace
{

inline constexpr std::uint64_t unitsPerSecond = 10'000'000;

// Takes so many digits, and the sign in front of them if one is named, away.
std::optional<unsigned> TakeNumber(std::u16string_view& text, std::size_t digits,
                                   std::u16string_view signs = {})
{
    if (!signs.empty())
    {
        if (text.empty() || signs.find(text[0]) == std::u16string_view::npos)
            return std::nullopt;
        text.remove_prefix(1);
    }
    const std::u16string_view number = text.substr(0, digits);
    if (number.size() < digits || !std::all_of(number.begin(), number.end(), [](char16_t unit) {
            return unit >= u'0' && unit <= u'9';
        }))
        return std::nullopt;
    text.remove_prefix(digits);
    unsigned value = 0;
    for (const char16_t digit : number)
        value = value * 10 + (digit - u'0');
    return value;
}

// Since 1601.
std::optional<std::uint64_t> TakeDays(std::u16string_view& text)
{
    using namespace std::chrono;
    const auto year = TakeNumber(text, 4);
    const auto month = year ? TakeNumber(text, 2, u"-") : std::nullopt;
    const auto day = month ? TakeNumber(text, 2, u"-") : std::nullopt;
    if (!day || *year < 1601)
        return std::nullopt;
    const year_month_day date(std::chrono::year(static_cast<int>(*year)),
                              std::chrono::month(*month), std::chrono::day(*day));
    if (!date.ok())
        return std::nullopt;
    const sys_days first = std::chrono::year(1601) / January / 1;
    return static_cast<std::uint64_t>((sys_days(date) - first).count());
}

std::optional<std::uint64_t> TakeSeconds(std::u16string_view text)
{
    if (text.ends_with(u'Z'))
        text.remove_suffix(1);
    const auto hour = TakeNumber(text, 2, u"T ");
    const auto minute = hour ? TakeNumber(text, 2, u":") : std::nullopt;
    const auto second = text.empty() ? 0U : TakeNumber(text, 2, u":");
    if (!minute || !second || !text.empty() || *hour > 23 || *minute > 59 || *second > 59)
        return std::nullopt;
    return (std::uint64_t{*hour} * 60 + *minute) * 60 + *second;
}

} // namespace

std::optional<std::uint64_t> ParseTime(std::u16string_view text, DayPart part)
{
    const std::optional<std::uint64_t> days = TakeDays(text);
    if (!days)
        return std::nullopt;
    const std::uint64_t whole = part == DayPart::Begin ? 0 : 86399;
    const std::optional<std::uint64_t> seconds = text.empty() ? whole : TakeSeconds(text);
    if (!seconds)
        return std::nullopt;
    return (*days * 86400 + *seconds) * unitsPerSecond;
}

} // namespace tarnwell::host
