// The words of the texts that the Mercurial client prints.
#pragma once

#include "frame/text.h"

#include <charconv>
#include <cstdint>
#include <optional>
#include <string_view>

namespace tarnwell
{

// The text in front of `mark`, which is taken away with it. Nothing without a mark.
inline std::optional<std::string_view> TakeTo(std::string_view& text, char mark)
{
    const std::size_t end = text.find(mark);
    if (end == std::string_view::npos)
        return std::nullopt;
    const std::string_view taken = text.substr(0, end);
    text.remove_prefix(end + 1);
    return taken;
}

inline std::optional<std::uint64_t> WholeNumber(std::string_view text)
{
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return number;
}

inline bool IsHgId(std::string_view text)
{
    return text.size() == 40 && IsHexadecimal(text);
}

} // namespace tarnwell
