#include "frame/text.h"

namespace tarnwell
{

std::u16string FromHost(const OLECHAR* text)
{
    return std::u16string(Units(text));
}

HRESULT ToHost(std::u16string_view text, BSTR* out)
{
    const std::u16string_view whole = text.substr(0, text.find(u'\0'));
    *out = SysAllocStringLen(Wide(whole.data()), static_cast<UINT>(whole.size()));
    return *out == nullptr ? E_OUTOFMEMORY : S_OK;
}

std::u16string Decimal(std::uint64_t number)
{
    const std::string digits = std::to_string(number);
    return std::u16string(digits.begin(), digits.end());
}

} // namespace tarnwell
