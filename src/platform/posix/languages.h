// The languages that the module has texts in.
#pragma once

#include "platform/win32.h"

namespace tarnwell
{

inline constexpr LANGID english = 2057;
inline constexpr LANGID japanese = 1041;

} // namespace tarnwell
