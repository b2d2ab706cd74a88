// The platform's times: 100 ns since 1601, in UTC as the system's.
#pragma once

#include "platform/win32.h"

#include <ctime>
#include <sys/stat.h>

namespace tarnwell::posix
{

// Times outside the range of FILETIME become its ends.
FILETIME FileTimeOf(std::int64_t seconds, std::uint32_t nanoseconds);

inline FILETIME FileTimeOf(const statx_timestamp& time)
{
    return FileTimeOf(time.tv_sec, time.tv_nsec);
}

// The birth time where the file system keeps one, else the write time.
FILETIME CreationTimeOf(const struct statx& entry);

} // namespace tarnwell::posix
