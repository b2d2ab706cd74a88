#include "runner/numbers.h"

#include <algorithm>
#include <limits>

namespace tarnwell
{

std::int32_t LeadingNumber(std::u16string_view text)
{
    using Limits = std::numeric_limits<std::int32_t>;
    text.remove_prefix(std::min(text.size(), text.find_first_not_of(u" \t\n\v\f\r")));
    const bool negative = text.starts_with(u'-');
    if (negative || text.starts_with(u'+'))
        text.remove_prefix(1);
    std::int64_t number = 0;
    for (const char16_t unit : text)
    {
        if (unit < u'0' || unit > u'9')
            break;
        number = std::min<std::int64_t>(number * 10 + (unit - u'0'), -std::int64_t{Limits::min()});
    }
    return static_cast<std::int32_t>(negative ? -number
                                              : std::min<std::int64_t>(number, Limits::max()));
}

std::uint64_t UnixTimeToFileTime(std::u16string_view text)
{
    constexpr std::int64_t startOfUnixTime = 116444736000000000; // 1 January 1970
    constexpr std::int64_t perSecond = 10000000;
    return static_cast<std::uint64_t>(startOfUnixTime + LeadingNumber(text) * perSecond);
}

std::optional<std::uint64_t> FileTimeOf(const SYSTEMTIME& parts)
{
    FILETIME time{};
    if (!SystemTimeToFileTime(&parts, &time))
        return std::nullopt;
    return (std::uint64_t{time.dwHighDateTime} << 32) | time.dwLowDateTime;
}

} // namespace tarnwell
