// The platform's times: 100 ns since 1601, in UTC as the system's.
#pragma once

#include "platform/filetime.h"

#include <cstdint>
#include <ctime>
#include <limits>
#include <sys/stat.h>

namespace tarnwell::posix
{

constexpr std::int64_t ticksPerSecond = 10'000'000;
constexpr std::int64_t nanosecondsPerTick = 100;
// From 1 January 1601 to 1 January 1970.
constexpr std::int64_t epochDistance = 11'644'473'600;
constexpr std::uint64_t lastTicks = std::numeric_limits<std::int64_t>::max();

// Times outside the range of FILETIME become its ends.
inline FILETIME FileTimeOf(std::int64_t seconds, std::uint32_t nanoseconds)
{
    constexpr std::int64_t lastSecond = lastTicks / ticksPerSecond - epochDistance - 1;
    std::uint64_t ticks = 0;
    if (seconds > lastSecond)
        ticks = lastTicks;
    else if (seconds >= -epochDistance)
        ticks = static_cast<std::uint64_t>((seconds + epochDistance) * ticksPerSecond +
                                           nanoseconds / nanosecondsPerTick);
    return tarnwell::FileTimeOf(ticks);
}

inline FILETIME FileTimeOf(const statx_timestamp& time)
{
    return FileTimeOf(time.tv_sec, time.tv_nsec);
}

// The birth time where the file system keeps one, else the write time.
inline FILETIME CreationTimeOf(const struct statx& entry)
{
    const bool known = (entry.stx_mask & STATX_BTIME) != 0;
    return FileTimeOf(known ? entry.stx_btime : entry.stx_mtime);
}

} // namespace tarnwell::posix
