// A line, word by word, with the place of each word in it.
#pragma once

#include <algorithm>
#include <optional>
#include <string_view>

namespace tarnwell::posix
{

struct Word
{
    std::string_view text;
    // In the line: of its first byte, and of the byte behind it.
    std::size_t begin = 0;
    std::size_t end = 0;
};

// The first word at or behind `from`; empty at the end of the line.
inline Word WordAt(std::string_view line, std::size_t from)
{
    const std::size_t begin = std::min(line.find_first_not_of(' ', from), line.size());
    const std::size_t end = std::min(line.find(' ', begin), line.size());
    return {line.substr(begin, end - begin), begin, end};
}

} // namespace tarnwell::posix
