// Text in buffers of a given size.
#pragma once

#include "platform/win32.h"

namespace tarnwell::posix
{

// Puts the unit or the pair of units that stands for `point` before `end`, and goes behind it.
// False if there is no room.
inline bool PutUtf16(WCHAR*& out, const WCHAR* end, char32_t point)
{
    const bool isPair = point >= 0x10000;
    if (end - out < (isPair ? 2 : 1))
        return false;
    if (isPair)
    {
        *out++ = static_cast<WCHAR>(0xD7C0 + (point >> 10));
        point = 0xDC00 + (point & 0x3FF);
    }
    *out++ = static_cast<WCHAR>(point);
    return true;
}

} // namespace tarnwell::posix
