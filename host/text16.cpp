#include "text16.h"

#include <tarnwell/text.h>

#include <algorithm>
#include <cstdio>

namespace tarnwell::host
{

namespace
{

// The text without the lone surrogates that EncodeName refuses.
std::u16string Encodable(std::u16string_view text)
{
    std::u16string result(text);
    for (std::size_t i = 0; i < result.size(); ++i)
    {
        const bool pair =
            IsHighSurrogate(result[i]) && i + 1 < result.size() && IsLowSurrogate(result[i + 1]);
        if (pair)
            ++i;
        else if (IsHighSurrogate(result[i]) ||
                 (IsLowSurrogate(result[i]) && (result[i] < 0xDC80 || result[i] > 0xDCFF)))
            result[i] = 0xFFFD;
    }
    return result;
}

} // namespace

std::u16string Decimal(std::uint64_t value)
{
    return FromUtf8(std::to_string(value));
}

std::u16string Signed(std::int64_t value)
{
    return FromUtf8(std::to_string(value));
}

std::u16string Hex(std::uint32_t value)
{
    char text[11];
    std::snprintf(text, sizeof text, "0x%08X", static_cast<unsigned>(value));
    return FromUtf8(text);
}

std::u16string Padded(std::uint64_t value, std::size_t width)
{
    const std::u16string digits = Decimal(value);
    return std::u16string(width - std::min(width, digits.size()), u'0') + digits;
}

std::u16string FromUtf8(std::string_view bytes)
{
    return DecodeName(bytes);
}

std::string ToUtf8(std::u16string_view text)
{
    return EncodeName(Encodable(text)).value_or(std::string());
}

} // namespace tarnwell::host
