#include "platform/posix/calendar/localtime.h"

#include "platform/filetime.h"
#include "platform/posix/errors/lasterror.h"

#include <ctime>
#include <limits>
#include <mutex>

namespace tarnwell::posix
{

std::int64_t LocalAdvance()
{
    const std::time_t now = std::time(nullptr);
    std::tm parts = {};
    // localtime_r need not look at TZ by itself. One thread at a time: the C library's own lock is
    // out of a thread sanitizer's sight.
    static std::mutex guard;
    const std::lock_guard lock(guard);
    tzset();
    return localtime_r(&now, &parts) == nullptr ? 0 : parts.tm_gmtoff;
}

} // namespace tarnwell::posix

extern "C" BOOL LocalFileTimeToFileTime(const FILETIME* local, FILETIME* time)
{
    using namespace tarnwell::posix;
    constexpr std::int64_t ticksPerSecond = 10'000'000;
    constexpr std::uint64_t lastTicks = std::numeric_limits<std::int64_t>::max();
    const std::uint64_t ticks = tarnwell::TimeOf(*local);
    if (ticks == 0)
    {
        *time = {};
        return 1;
    }
    const std::int64_t advance = LocalAdvance() * ticksPerSecond;
    // Below 0 it wraps, and is past the last.
    const std::uint64_t utc = ticks - static_cast<std::uint64_t>(advance);
    if (ticks > lastTicks || utc > lastTicks)
        return Fail(ERROR_INVALID_PARAMETER);
    *time = tarnwell::FileTimeOf(utc);
    return 1;
}
