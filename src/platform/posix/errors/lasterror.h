// How an operation reports its failure.
#pragma once

#include "platform/win32.h"

namespace tarnwell::posix
{

// Sets the thread's last error; the result is the "no" of most operations.
BOOL Fail(DWORD error);
// The same with the code for the present errno.
BOOL FailWithErrno();

} // namespace tarnwell::posix
