// What the desktop does with files.
#pragma once

#include "platform/posix/win32/files.h"

inline constexpr UINT FO_DELETE = 3;
inline constexpr WORD FOF_NOCONFIRMATION = 0x10;
inline constexpr WORD FOF_ALLOWUNDO = 0x40;
inline constexpr WORD FOF_NORECURSION = 0x1000;

struct SHFILEOPSTRUCTW
{
    HWND hwnd;
    UINT wFunc;
    LPCWSTR pFrom;
    LPCWSTR pTo;
    WORD fFlags;
    BOOL fAnyOperationsAborted;
    void* hNameMappings;
    LPCWSTR lpszProgressTitle;
};

extern "C"
{
    // FO_DELETE only: for good, or with FOF_ALLOWUNDO to the desktop's trash. What can't go there
    // stays; without a program that knows of a trash that is ERROR_NOT_SUPPORTED. `pFrom` is a
    // list of terminated paths closed by an empty one; the names are literal. Links are deleted,
    // never followed. With FOF_NORECURSION a folder must be empty. An empty list, a root, and a
    // last component of "." or ".." are ERROR_INVALID_PARAMETER. The result is 0 or an error code;
    // a "no" to the question is ERROR_CANCELLED with fAnyOperationsAborted set.
    int SHFileOperationW(SHFILEOPSTRUCTW* operation);
}
