// File times between UTC and the platform's idea of local time: the bias that is in force now,
// whatever it was at that time.
#pragma once

#include "platform/win32.h"

namespace tarnwell::posix
{

// Seconds that local time is ahead of UTC now.
std::int64_t LocalAdvance();

} // namespace tarnwell::posix
