// The present time as a number.
#pragma once

#include "platform/filetime.h"

namespace tarnwell
{

inline std::uint64_t PresentTime()
{
    FILETIME now{};
    CoFileTimeNow(&now);
    return TimeOf(now);
}

} // namespace tarnwell
