// The language in which the user wants to read.
#pragma once

#include "platform/win32.h"

namespace tarnwell
{

// The user interface's language; where the system can't tell it, the user's default language.
LANGID WantedLanguage();

} // namespace tarnwell
