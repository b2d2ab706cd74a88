#include "frame/text.h"

#include "platform/ascii.h"

#include <algorithm>
#include <array>
#include <limits>

namespace tarnwell
{

std::u16string FromHost(const OLECHAR* text)
{
    return std::u16string(Units(text));
}

HRESULT ToHost(std::u16string_view text, BSTR* out)
{
    return ToHostWhole(text.substr(0, TerminatorIn(text)), out);
}

HRESULT ToHostWhole(std::u16string_view text, BSTR* out)
{
    *out = SysAllocStringLen(Wide(text.data()), static_cast<UINT>(text.size()));
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

bool IsHexadecimal(std::string_view text)
{
    static constexpr auto isDigit = [] {
        std::array<bool, 256> table{};
        for (const char digit : std::string_view("0123456789abcdef"))
            table[static_cast<unsigned char>(digit)] = true;
        return table;
    }();
    return std::all_of(text.begin(), text.end(),
                       [](char byte) { return isDigit[static_cast<unsigned char>(byte)]; });
}

} // namespace tarnwell
