// The values in the Subversion client's output that are more than text.
#pragma once

#include <cstdint>
#include <limits>
#include <string_view>

namespace tarnwell
{

// The FILETIME of the first "2024-03-05T10:20:30.123456Z" in `text`; 0 without one, or if there is
// no such day or time. The fraction is a number of microseconds, however many digits it has.
std::uint64_t ParseSvnDate(std::u16string_view text);

// The whole number at the start of `text` as formatted input reads one: behind white space, with a
// sign or without; 0 without a digit, and `largest` where it would be larger.
std::uint64_t ParseSvnNumber(std::u16string_view text, std::uint64_t largest);

template <class Number> Number ParseSvnNumber(std::u16string_view text)
{
    return static_cast<Number>(ParseSvnNumber(text, std::numeric_limits<Number>::max()));
}

// Without the white space at both ends, as Unicode knows it.
std::u16string_view TrimmedOfWhiteSpace(std::u16string_view text);

} // namespace tarnwell
