// Text at the platform's calls. All logic holds std::u16string; the platform's wide unit has the
// same size everywhere and another type on Windows (which is why that build turns off aliasing
// by type).
#pragma once

#include "platform/win32.h"

#include <string>
#include <string_view>

namespace tarnwell
{

static_assert(sizeof(WCHAR) == sizeof(char16_t) && sizeof(OLECHAR) == sizeof(char16_t));

// Valid as long as `text` is.
inline const WCHAR* Wide(const std::u16string& text)
{
    return reinterpret_cast<const WCHAR*>(text.c_str());
}

inline WCHAR* Wide(char16_t* units)
{
    return reinterpret_cast<WCHAR*>(units);
}

inline const WCHAR* Wide(const char16_t* units)
{
    return reinterpret_cast<const WCHAR*>(units);
}

// The text at `units` up to its terminator; empty for null.
inline std::u16string_view Units(const WCHAR* units)
{
    return units == nullptr ? std::u16string_view()
                            : std::u16string_view(reinterpret_cast<const char16_t*>(units));
}

} // namespace tarnwell
