// The user's settings.
#pragma once

#include "platform/posix/win32/types.h"

using LSTATUS = LONG;
using REGSAM = DWORD;
using HKEY = struct OpenedKey*;

inline const HKEY HKEY_CURRENT_USER = reinterpret_cast<HKEY>(ULONG_PTR{0x80000001});
inline constexpr REGSAM KEY_READ = 0x20019;

inline constexpr DWORD REG_NONE = 0;
inline constexpr DWORD REG_SZ = 1;
inline constexpr DWORD REG_EXPAND_SZ = 2;
inline constexpr DWORD REG_BINARY = 3;
inline constexpr DWORD REG_DWORD = 4;

// The results are error codes; the last error stays as it is.
extern "C"
{
    // The key "Software\Dovrin\Vorel\7.0\Vorel7.FTPFS" of HKEY_CURRENT_USER only, for KEY_READ. It
    // stands in the file tarnwell/ftp.conf below XDG_CONFIG_HOME if that is an absolute path, else
    // below ~/.config; without the file there is no key. One line a value: NAME = TYPE DATA, with
    // one of the types above and data that goes on to the end of the line: text, or a number,
    // decimal or with 0x in front. A line that begins with # says nothing. Data that doesn't fit
    // its type, and an unknown type, make the value one of REG_NONE.
    LSTATUS RegOpenKeyExW(HKEY key, LPCWSTR subkey, DWORD options, REGSAM access, HKEY* opened);
    // `size`, in bytes, receives that of the data, also with ERROR_MORE_DATA. Text comes with its
    // terminator. Names are compared without regard to the case of A to Z.
    LSTATUS RegQueryValueExW(HKEY key, LPCWSTR name, DWORD* reserved, DWORD* type, BYTE* data,
                             DWORD* size);
    LSTATUS RegCloseKey(HKEY key);
}
