#include "runner/decoding.h"

#include "platform/wide.h"

#include <algorithm>

namespace tarnwell
{

namespace
{

// What the platform converts at once: it counts in 32 bits.
constexpr std::size_t mostAtOnce = std::size_t{1024} * 1024;

void Widen(std::string_view bytes, char16_t* units)
{
    std::transform(bytes.begin(), bytes.end(), units, [](char byte) {
        return static_cast<char16_t>(static_cast<unsigned char>(byte));
    });
}

// The number of units; 0 if the platform can't convert the bytes.
std::size_t FromUtf8(std::string_view bytes, char16_t* units)
{
    if (bytes.empty())
        return 0;
    const int size = static_cast<int>(bytes.size());
    return static_cast<std::size_t>(
        MultiByteToWideChar(CP_UTF8, 0, bytes.data(), size, Wide(units), size));
}

// The number of units, of which there are never more than bytes.
std::size_t Convert(std::string_view bytes, char16_t* units, Decoding decoding)
{
    if (decoding == Decoding::Utf8)
        return FromUtf8(bytes, units);
    Widen(bytes, units);
    return bytes.size();
}

} // namespace

std::size_t BegunAtEnd(std::string_view bytes)
{
    constexpr std::size_t longest = 4;
    for (std::size_t count = 1; count < longest && count <= bytes.size(); ++count)
    {
        const auto byte = static_cast<unsigned char>(bytes[bytes.size() - count]);
        if (byte < 0x80)
            return 0;
        if (byte >= 0xC0)
            return count;
    }
    return 0;
}

std::u16string Decode(std::string_view bytes, Decoding decoding)
{
    std::u16string text;
    AppendDecoded(text, bytes, decoding);
    return text;
}

void AppendDecoded(std::u16string& text, std::string_view bytes, Decoding decoding)
{
    // Most texts are short: those take no memory but their own, and none is cleared in vain.
    char16_t few[256];
    if (bytes.size() <= std::size(few))
    {
        text.append(few, Convert(bytes, few, decoding));
        return;
    }
    std::size_t size = text.size();
    text.resize(size + bytes.size());
    while (!bytes.empty())
    {
        std::string_view piece = bytes.substr(0, mostAtOnce);
        if (piece.size() < bytes.size())
            piece.remove_suffix(BegunAtEnd(piece));
        size += Convert(piece, text.data() + size, decoding);
        bytes.remove_prefix(piece.size());
    }
    text.resize(size);
}

} // namespace tarnwell
