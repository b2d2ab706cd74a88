// Statuses made from the platform's error codes.
#pragma once

#include "platform/win32.h"

namespace tarnwell
{

// A positive code becomes 0x8007xxxx with its low 16 bits; any other value stays as it is, so
// that a code of 0 gives a success.
constexpr HRESULT StatusFromError(DWORD error)
{
    const auto code = static_cast<std::int32_t>(error);
    if (code <= 0)
        return static_cast<HRESULT>(code);
    return static_cast<HRESULT>((error & 0xFFFF) | 0x80070000);
}

// The status of the call that has just failed. To be taken before anything else runs, destructors
// included.
inline HRESULT StatusFromLastError()
{
    return StatusFromError(GetLastError());
}

} // namespace tarnwell
