// SystemTimeToFileTime.
#include "platform/posix/calendar/filetime.h"
#include "platform/posix/errors/lasterror.h"

#include <chrono>

namespace tarnwell::posix
{
namespace
{

bool IsTimeOfDay(const SYSTEMTIME& parts)
{
    return parts.wHour < 24 && parts.wMinute < 60 && parts.wSecond < 60 &&
           parts.wMilliseconds < 1000;
}

bool IsDay(const SYSTEMTIME& parts)
{
    constexpr WORD firstYear = 1601;
    constexpr WORD lastYear = 30827;
    if (parts.wYear < firstYear || parts.wYear > lastYear || parts.wMonth > 12 || parts.wDay > 31)
        return false;
    return std::chrono::year_month_day(std::chrono::year(parts.wYear),
                                       std::chrono::month(parts.wMonth),
                                       std::chrono::day(parts.wDay))
        .ok();
}

std::int64_t SecondsSince1970(const SYSTEMTIME& parts)
{
    const std::chrono::sys_days day(std::chrono::year(parts.wYear) / parts.wMonth / parts.wDay);
    const auto time = day + std::chrono::hours(parts.wHour) + std::chrono::minutes(parts.wMinute) +
                      std::chrono::seconds(parts.wSecond);
    return time.time_since_epoch().count();
}

} // namespace
} // namespace tarnwell::posix

extern "C" BOOL SystemTimeToFileTime(const SYSTEMTIME* parts, FILETIME* time)
{
    using namespace tarnwell::posix;
    if (!IsDay(*parts) || !IsTimeOfDay(*parts))
        return Fail(ERROR_INVALID_PARAMETER);
    constexpr std::uint32_t nanosecondsPerMillisecond = 1'000'000;
    *time = FileTimeOf(SecondsSince1970(*parts), parts->wMilliseconds * nanosecondsPerMillisecond);
    return 1;
}
