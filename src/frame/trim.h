// White space around the lines and texts of clients and servers.
#pragma once

#include <string_view>

namespace tarnwell
{

inline constexpr std::u16string_view blanks = u" \r\n\t";

constexpr std::u16string_view TrimmedLeft(std::u16string_view text)
{
    const std::size_t first = text.find_first_not_of(blanks);
    return first == std::u16string_view::npos ? std::u16string_view() : text.substr(first);
}

constexpr std::u16string_view Trimmed(std::u16string_view text)
{
    return TrimmedLeft(text).substr(0, TrimmedLeft(text).find_last_not_of(blanks) + 1);
}

} // namespace tarnwell
