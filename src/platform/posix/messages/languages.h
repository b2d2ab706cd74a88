// The languages that the module has texts in.
#pragma once

#include "platform/win32.h"

#include <string_view>

namespace tarnwell::posix
{

inline constexpr LANGID english = 2057;
inline constexpr LANGID japanese = 1041;

// The name of the locale that rules messages: the first of LC_ALL, LC_MESSAGES and LANG that says
// anything, else "C".
std::string_view MessagesLanguage();

} // namespace tarnwell::posix
