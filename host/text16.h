// Small text: numbers and the way between UTF-16 and UTF-8.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tarnwell::host
{

std::u16string Decimal(std::uint64_t value);
std::u16string Signed(std::int64_t value);

// Eight digits behind "0x".
std::u16string Hex(std::uint32_t value);

// Zeros in front, up to `width`.
std::u16string Padded(std::uint64_t value, std::size_t width);

// Halves of a pair.
constexpr bool IsHighSurrogate(char16_t unit)
{
    return unit >= 0xD800 && unit <= 0xDBFF;
}
constexpr bool IsLowSurrogate(char16_t unit)
{
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

// Bytes that aren't UTF-8 become lone surrogates, and lone surrogates that stand for a byte
// become that byte, so that names pass unchanged. Other lone surrogates are shown as U+FFFD.
std::u16string FromUtf8(std::string_view bytes);
std::string ToUtf8(std::u16string_view text);

} // namespace tarnwell::host
