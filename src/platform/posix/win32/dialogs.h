// Questions to the user.
#pragma once

#include "platform/posix/win32/types.h"

inline constexpr UINT MB_YESNOCANCEL = 0x3;
inline constexpr UINT MB_ICONINFORMATION = 0x40;
inline constexpr int IDCANCEL = 2;
inline constexpr int IDYES = 6;

// Asks through the desktop's dialog program if there is a display, else on the terminal, the
// caption left out. Only MB_YESNOCANCEL with MB_ICONINFORMATION is supported; anything but a yes,
// and nobody to ask, is IDCANCEL.
extern "C" int MessageBoxW(HWND owner, LPCWSTR text, LPCWSTR caption, UINT style);
