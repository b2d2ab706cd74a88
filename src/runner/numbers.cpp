#include "runner/numbers.h"

#include "frame/filetimes.h"

namespace tarnwell
{

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
    return TimeOf(time);
}

} // namespace tarnwell
