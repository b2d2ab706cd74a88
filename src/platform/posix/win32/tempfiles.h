// Temporary files.
#pragma once

#include "platform/posix/win32/types.h"

extern "C"
{
    // TMPDIR if that is an absolute path, else /tmp; ends in a separator. The result is the length
    // without the terminator; 0 with ERROR_INSUFFICIENT_BUFFER if `size`, in units, is too small.
    DWORD GetTempPathW(DWORD size, LPWSTR buffer);
    // Makes an empty file that only the user can open: the prefix, hexadecimal digits and ".tmp".
    // `unique` must be 0; `path` has MAX_PATH units, and the path must fit (ERROR_BUFFER_OVERFLOW).
    // ERROR_DIRECTORY if the folder is none. The result is the number in the name, never 0.
    UINT GetTempFileNameW(LPCWSTR folder, LPCWSTR prefix, UINT unique, LPWSTR path);
}
