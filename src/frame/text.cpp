#include "frame/text.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace tarnwell
{

namespace
{

// Where the first terminator is, or the end. By four units at a time, as every text that a host
// gets is looked through.
std::size_t TerminatorIn(std::u16string_view text)
{
    constexpr std::uint64_t ones = 0x0001000100010001;
    constexpr std::uint64_t highBits = 0x8000800080008000;
    std::uint64_t block = 0;
    constexpr std::size_t units = sizeof block / sizeof(char16_t);
    std::size_t at = 0;
    for (; text.size() - at >= units; at += units)
    {
        std::memcpy(&block, text.data() + at, sizeof block);
        if (((block - ones) & ~block & highBits) != 0)
            break;
    }
    while (at < text.size() && text[at] != u'\0')
        ++at;
    return at;
}

} // namespace

std::u16string FromHost(const OLECHAR* text)
{
    return std::u16string(Units(text));
}

HRESULT ToHost(std::u16string_view text, BSTR* out)
{
    const std::u16string_view whole = text.substr(0, TerminatorIn(text));
    *out = SysAllocStringLen(Wide(whole.data()), static_cast<UINT>(whole.size()));
    return *out == nullptr ? E_OUTOFMEMORY : S_OK;
}

std::u16string Decimal(std::uint64_t number)
{
    const std::string digits = std::to_string(number);
    return std::u16string(digits.begin(), digits.end());
}

std::int32_t LeadingNumber(std::u16string_view text)
{
    using Limits = std::numeric_limits<std::int32_t>;
    text.remove_prefix(std::min(text.size(), text.find_first_not_of(u" \t\n\v\f\r")));
    const bool negative = text.starts_with(u'-');
    if (negative || text.starts_with(u'+'))
        text.remove_prefix(1);
    std::int64_t number = 0;
    for (const char16_t unit : text)
    {
        if (unit < u'0' || unit > u'9')
            break;
        number = std::min<std::int64_t>(number * 10 + (unit - u'0'), -std::int64_t{Limits::min()});
    }
    return static_cast<std::int32_t>(negative ? -number
                                              : std::min<std::int64_t>(number, Limits::max()));
}

} // namespace tarnwell
