// Whether a process has ended as it meant to.
#pragma once

#include "platform/win32.h"

#include <optional>
#include <string>

namespace tarnwell
{

// What the system says has ended `process` in its own place, which may be no words at all. Nothing
// if the process chose its exit code, and where the system doesn't tell.
std::optional<std::u16string> CrashOf(HANDLE process);

} // namespace tarnwell
