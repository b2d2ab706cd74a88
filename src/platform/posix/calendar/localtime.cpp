#include "platform/posix/calendar/localtime.h"

#include "platform/filetime.h"
#include "platform/posix/errors/lasterror.h"

#include <cstdlib>
#include <ctime>
#include <functional>
#include <limits>
#include <mutex>
#include <string_view>

namespace tarnwell::posix
{
namespace
{

// What an answer holds for: one second, under one setting of TZ.
struct Instant
{
    std::time_t second = -1;
    std::size_t zone = 0;

    bool operator==(const Instant&) const = default;
};

Instant InstantNow()
{
    const char* const zone = std::getenv("TZ");
    return {std::time(nullptr), zone == nullptr ? 0 : std::hash<std::string_view>()(zone)};
}

std::int64_t AdvanceAt(std::time_t second)
{
    std::tm parts = {};
    // localtime_r need not look at TZ by itself.
    tzset();
    return localtime_r(&second, &parts) == nullptr ? 0 : parts.tm_gmtoff;
}

} // namespace

std::int64_t LocalAdvance()
{
    // One thread at a time: the C library's own lock is out of a thread sanitizer's sight.
    static std::mutex guard;
    static Instant known;
    static std::int64_t advance = 0;
    const std::lock_guard lock(guard);
    // A listing asks once for each entry, and the C library may open the zone's file each time.
    if (const Instant present = InstantNow(); present != known)
    {
        advance = AdvanceAt(present.second);
        known = present;
    }
    return advance;
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
    // Below 0 it wraps around, to past the last time.
    const std::uint64_t utc = ticks - static_cast<std::uint64_t>(advance);
    if (ticks > lastTicks || utc > lastTicks)
        return Fail(ERROR_INVALID_PARAMETER);
    *time = tarnwell::FileTimeOf(utc);
    return 1;
}
