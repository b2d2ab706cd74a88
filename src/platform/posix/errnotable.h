// Between the C library's error numbers and the platform's codes.
#pragma once

#include "platform/posix/win32.h"

namespace tarnwell
{

DWORD ErrorFromErrno(int number);

// 0 for a code without a counterpart.
int ErrnoFromError(DWORD error);

} // namespace tarnwell
