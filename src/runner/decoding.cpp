#include "runner/decoding.h"

#include "platform/wide.h"

#include <algorithm>
#include <limits>

namespace tarnwell
{

namespace
{

std::u16string Widened(std::string_view bytes)
{
    std::u16string text(bytes.size(), u'\0');
    std::transform(bytes.begin(), bytes.end(), text.begin(), [](char byte) {
        return static_cast<char16_t>(static_cast<unsigned char>(byte));
    });
    return text;
}

std::u16string FromUtf8(std::string_view bytes)
{
    // Never more units than bytes.
    if (bytes.empty() || bytes.size() > std::numeric_limits<int>::max())
        return {};
    const int size = static_cast<int>(bytes.size());
    std::u16string text(bytes.size(), u'\0');
    const int units = MultiByteToWideChar(CP_UTF8, 0, bytes.data(), size, Wide(text.data()), size);
    text.resize(static_cast<std::size_t>(units));
    return text;
}

} // namespace

std::u16string Decode(std::string_view bytes, Decoding decoding)
{
    return decoding == Decoding::Utf8 ? FromUtf8(bytes) : Widened(bytes);
}

} // namespace tarnwell
