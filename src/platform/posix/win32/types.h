// The plain types of the platform operations.
#pragma once

#include <tarnwell/com.h>

using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using LONG = std::int32_t;
using UINT = std::uint32_t;
using LPVOID = void*;
using LONGLONG = std::int64_t;
using DWORD_PTR = std::uintptr_t;
using LONG_PTR = std::intptr_t;
using ULONG_PTR = std::uintptr_t;
using LANGID = WORD;
using WCHAR = char16_t;
using LPWSTR = WCHAR*;
using LPCWSTR = const WCHAR*;
using LPCVOID = const void*;
using HANDLE = void*;
using HMODULE = void*;

// Callbacks and the system's own calls have the plain calling convention.
#define CALLBACK
#define NTAPI
