// The platform's times as numbers: 100-nanosecond intervals since 1 January 1601 UTC.
#pragma once

#include "platform/win32.h"

#include <cstdint>

namespace tarnwell
{

constexpr std::uint64_t TimeOf(const FILETIME& time)
{
    return (std::uint64_t{time.dwHighDateTime} << 32) | time.dwLowDateTime;
}

constexpr FILETIME FileTimeOf(std::uint64_t time)
{
    return {static_cast<DWORD>(time), static_cast<DWORD>(time >> 32)};
}

} // namespace tarnwell
