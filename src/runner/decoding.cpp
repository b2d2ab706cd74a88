#include "runner/decoding.h"

#include "platform/wide.h"

#include <algorithm>
#include <limits>

namespace tarnwell
{

namespace
{

void Widen(std::string_view bytes, char16_t* units)
{
    std::transform(bytes.begin(), bytes.end(), units, [](char byte) {
        return static_cast<char16_t>(static_cast<unsigned char>(byte));
    });
}

// The number of units; 0 if the platform can't convert the bytes.
std::size_t FromUtf8(std::string_view bytes, char16_t* units)
{
    if (bytes.empty() || bytes.size() > std::numeric_limits<int>::max())
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
    const std::size_t start = text.size();
    text.resize(start + bytes.size());
    text.resize(start + Convert(bytes, text.data() + start, decoding));
}

} // namespace tarnwell
