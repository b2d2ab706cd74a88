// Text between the program's type and the system's.
#pragma once

#include <string>
#include <string_view>

namespace tarnwell::host
{

inline std::u16string FromWide(std::wstring_view text)
{
    return {text.begin(), text.end()};
}

inline std::wstring ToWide(std::u16string_view text)
{
    return {text.begin(), text.end()};
}

} // namespace tarnwell::host
