// The module that this code is linked into.
#pragma once

#include "platform/win32.h"

namespace tarnwell
{

HMODULE ThisModule();

} // namespace tarnwell
