// Who the process acts for.
#pragma once

#include "platform/posix/win32/types.h"

extern "C"
{
    // The name of the user with whose rights the process acts. `size` is in units and receives
    // what the name takes with its terminator, also with ERROR_INSUFFICIENT_BUFFER.
    // ERROR_NONE_MAPPED if that user has no name.
    BOOL GetUserNameW(LPWSTR name, DWORD* size);
}
