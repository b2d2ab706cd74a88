// Calls of the system that are looked up by name.
#pragma once

#include "platform/win32.h"

namespace tarnwell
{

// Loads `library` if it isn't there yet, and leaves it loaded. Null if there is no such library, or
// no such call in it.
FARPROC FindSystemCall(LPCWSTR library, const char* name);

} // namespace tarnwell
