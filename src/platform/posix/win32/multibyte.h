// Bytes to text.
#pragma once

#include "platform/posix/win32/types.h"

inline constexpr UINT CP_UTF8 = 65001;

// From CP_UTF8 only, without flags and with a positive size. Each longest sequence that might have
// begun a character and doesn't become one turns into U+FFFD. The result is the number of units;
// with a `unitCount` of 0, those needed. 0 with ERROR_INSUFFICIENT_BUFFER if they don't fit.
extern "C" int MultiByteToWideChar(UINT codePage, DWORD flags, const char* bytes, int byteCount,
                                   LPWSTR units, int unitCount);
