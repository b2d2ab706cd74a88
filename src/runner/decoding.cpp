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

} // namespace

std::u16string Decode(std::string_view bytes, Decoding decoding)
{
    std::u16string text;
    AppendDecoded(text, bytes, decoding);
    return text;
}

void AppendDecoded(std::u16string& text, std::string_view bytes, Decoding decoding)
{
    const std::size_t start = text.size();
    // Never more units than bytes.
    text.resize(start + bytes.size());
    if (decoding == Decoding::Utf8)
        text.resize(start + FromUtf8(bytes, text.data() + start));
    else
        Widen(bytes, text.data() + start);
}

} // namespace tarnwell
