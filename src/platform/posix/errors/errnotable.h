// Between the C library's error numbers and the platform's codes.
#pragma once

#include "platform/win32.h"

namespace tarnwell::posix
{

// ERROR_GEN_FAILURE for what the table doesn't know; never 0.
DWORD ErrorFromErrno(int number);

// The number whose text describes `error` best; 0 for a code without a counterpart.
int ErrnoFromError(DWORD error);

} // namespace tarnwell::posix
