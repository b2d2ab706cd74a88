// Language, messages, resources.
#pragma once

#include "platform/posix/win32/types.h"

#include <cstdarg>

inline constexpr DWORD FORMAT_MESSAGE_ALLOCATE_BUFFER = 0x100;
inline constexpr DWORD FORMAT_MESSAGE_IGNORE_INSERTS = 0x200;
inline constexpr DWORD FORMAT_MESSAGE_FROM_STRING = 0x400;
inline constexpr DWORD FORMAT_MESSAGE_FROM_SYSTEM = 0x1000;
inline constexpr DWORD FORMAT_MESSAGE_ARGUMENT_ARRAY = 0x2000;

inline LPCWSTR MAKEINTRESOURCEW(WORD id)
{
    return reinterpret_cast<LPCWSTR>(static_cast<DWORD_PTR>(id));
}

inline const LPCWSTR RT_STRING = MAKEINTRESOURCEW(6);

using ENUMRESNAMEPROCW = BOOL (*)(HMODULE module, LPCWSTR type, LPWSTR name, LONG_PTR param);
using ENUMRESLANGPROCW = BOOL (*)(HMODULE module, LPCWSTR type, LPCWSTR name, WORD language,
                                  LONG_PTR param);

extern "C"
{
    // From LC_ALL, LC_MESSAGES or LANG, the first that is set: Japanese is 1041, all else 2057.
    LANGID GetUserDefaultUILanguage();

    // Supports FORMAT_MESSAGE_ALLOCATE_BUFFER (required; the caller frees with LocalFree) with
    // either FORMAT_MESSAGE_FROM_STRING and FORMAT_MESSAGE_ARGUMENT_ARRAY (all inserts are
    // strings) or FORMAT_MESSAGE_FROM_SYSTEM. The system text is the C library's, in the
    // language of the environment, and ends in CR LF; 0 for codes that have no counterpart.
    DWORD FormatMessageW(DWORD flags, LPCVOID source, DWORD id, DWORD language, LPWSTR buffer,
                         DWORD size, va_list* arguments);
    HLOCAL LocalFree(HLOCAL memory);

    // String tables only (type RT_STRING): blocks of 16 length-prefixed texts, as Windows keeps
    // them. `module` is ignored: a library has one table.
    BOOL EnumResourceNamesW(HMODULE module, LPCWSTR type, ENUMRESNAMEPROCW callback,
                            LONG_PTR param);
    BOOL EnumResourceLanguagesW(HMODULE module, LPCWSTR type, LPCWSTR name,
                                ENUMRESLANGPROCW callback, LONG_PTR param);
    HRSRC FindResourceExW(HMODULE module, LPCWSTR type, LPCWSTR name, WORD language);
    HGLOBAL LoadResource(HMODULE module, HRSRC resource);
    void* LockResource(HGLOBAL resource);
    // In bytes.
    DWORD SizeofResource(HMODULE module, HRSRC resource);
}
