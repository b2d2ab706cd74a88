/// @file
/// Names between bytes and UTF-16.
///
/// File names on Linux are bytes. Those that are valid UTF-8 become the same text in UTF-16;
/// every byte that isn't part of valid UTF-8 becomes one lone surrogate DC80-DCFF, and turns back
/// into that byte, so that every file can be named. A host uses the same rule for the arguments
/// that its user types and for the names that it prints.
#pragma once

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tarnwell
{

namespace detail
{

// The first code point of `bytes`, with the number of bytes that it takes; 0 bytes if they
// don't begin with valid UTF-8 (overlong forms, surrogates and values past 10FFFF are invalid).
struct DecodedPoint
{
    char32_t point;
    std::size_t bytes;
};

inline DecodedPoint DecodePoint(std::string_view bytes)
{
    const auto at = [&](std::size_t i) -> unsigned {
        return i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0U;
    };
    const unsigned lead = at(0);
    if (lead < 0x80)
        return {static_cast<char32_t>(lead), 1};
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4)
        return {0, 0};
    char32_t point = lead & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i)
    {
        if ((at(i) & 0xC0) != 0x80)
            return {0, 0};
        point = (point << 6) | (at(i) & 0x3F);
    }
    const bool overlong = (length == 3 && point < 0x800) || (length == 4 && point < 0x10000);
    const bool outside = (point >= 0xD800 && point <= 0xDFFF) || point > 0x10FFFF;
    if (overlong || outside)
        return {0, 0};
    return {point, length};
}

inline void AppendUtf16(std::u16string& text, char32_t point)
{
    if (point < 0x10000)
    {
        text += static_cast<char16_t>(point);
        return;
    }
    text += static_cast<char16_t>(0xD7C0 + (point >> 10));
    text += static_cast<char16_t>(0xDC00 + (point & 0x3FF));
}

// Appends the ASCII characters that `bytes` begins with. Their number.
inline std::size_t AppendAscii(std::u16string& text, std::string_view bytes)
{
    const auto end = std::find_if(bytes.begin(), bytes.end(), [](char byte) {
        return static_cast<unsigned char>(byte) >= 0x80;
    });
    const auto count = static_cast<std::size_t>(end - bytes.begin());
    const std::size_t before = text.size();
    text.resize(before + count);
    std::transform(bytes.begin(), end, text.begin() + static_cast<std::ptrdiff_t>(before),
                   [](char byte) { return static_cast<char16_t>(byte); });
    return count;
}

inline void AppendUtf8(std::string& bytes, char32_t point)
{
    const auto tail = [&](unsigned shift) {
        bytes += static_cast<char>(0x80 | ((point >> shift) & 0x3F));
    };
    if (point < 0x80)
    {
        bytes += static_cast<char>(point);
    }
    else if (point < 0x800)
    {
        bytes += static_cast<char>(0xC0 | (point >> 6));
        tail(0);
    }
    else if (point < 0x10000)
    {
        bytes += static_cast<char>(0xE0 | (point >> 12));
        tail(6);
        tail(0);
    }
    else
    {
        bytes += static_cast<char>(0xF0 | (point >> 18));
        tail(12);
        tail(6);
        tail(0);
    }
}

} // namespace detail

/// Appends what DecodeName gives.
inline void AppendDecodedName(std::u16string& text, std::string_view bytes)
{
    while (!bytes.empty())
    {
        const std::size_t ascii = detail::AppendAscii(text, bytes);
        bytes.remove_prefix(ascii);
        if (bytes.empty())
            return;
        const detail::DecodedPoint next = detail::DecodePoint(bytes);
        if (next.bytes == 0)
            text += static_cast<char16_t>(0xDC00 + static_cast<unsigned char>(bytes[0]));
        else
            detail::AppendUtf16(text, next.point);
        bytes.remove_prefix(next.bytes == 0 ? 1 : next.bytes);
    }
}

/// A name's bytes as UTF-16; every sequence of bytes has one text.
inline std::u16string DecodeName(std::string_view bytes)
{
    std::u16string text;
    text.reserve(bytes.size());
    AppendDecodedName(text, bytes);
    return text;
}

/// Nothing if the text has a lone surrogate that stands for no byte: such a text names no file.
inline std::optional<std::string> EncodeName(std::u16string_view text)
{
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        const char32_t unit = text[i];
        const char32_t next = i + 1 < text.size() ? text[i + 1] : 0;
        if (unit < 0xD800 || unit > 0xDFFF)
        {
            detail::AppendUtf8(bytes, unit);
        }
        else if (unit < 0xDC00 && next >= 0xDC00 && next <= 0xDFFF)
        {
            detail::AppendUtf8(bytes, 0x10000 + ((unit - 0xD800) << 10) + (next - 0xDC00));
            ++i;
        }
        else if (unit >= 0xDC80 && unit <= 0xDCFF)
        {
            bytes += static_cast<char>(unit - 0xDC00);
        }
        else
        {
            return std::nullopt;
        }
    }
    return bytes;
}

} // namespace tarnwell
