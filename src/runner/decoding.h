// Text out of a client's bytes.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tarnwell
{

// What the bytes of a client's output mean.
enum class Decoding
{
    Utf8,  // ill-formed input is replaced as the platform does
    Widen, // each byte is the character of that number
};

// How many bytes at the end may begin a character of UTF-8 that goes on behind them.
std::size_t BegunAtEnd(std::string_view bytes);

// Empty if there are no bytes, or if the platform can't convert them.
std::u16string Decode(std::string_view bytes, Decoding decoding);
// The same behind what `text` holds.
void AppendDecoded(std::u16string& text, std::string_view bytes, Decoding decoding);

} // namespace tarnwell
