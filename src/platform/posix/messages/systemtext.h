// What the system says about a code.
#pragma once

#include "platform/posix/win32.h"

#include <string>

namespace tarnwell
{

// The C library's text for the counterpart of an error or status, in the language of the
// environment, ended by CR LF; empty if there is none.
std::u16string SystemText(DWORD code);

} // namespace tarnwell
