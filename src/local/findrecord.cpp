#include "local/findrecord.h"

#include <algorithm>

namespace tarnwell
{

namespace
{

template <std::size_t capacity> void CopyCut(WCHAR (&target)[capacity], std::u16string_view text)
{
    const std::u16string_view fits = text.substr(0, capacity - 1);
    WCHAR* const end = std::transform(fits.begin(), fits.end(), target,
                                      [](char16_t unit) { return static_cast<WCHAR>(unit); });
    *end = 0;
}

} // namespace

void SetLongName(WIN32_FIND_DATAW& record, std::u16string_view name)
{
    CopyCut(record.cFileName, name);
}

void SetNames(WIN32_FIND_DATAW& record, std::u16string_view name)
{
    CopyCut(record.cFileName, name);
    CopyCut(record.cAlternateFileName, name);
}

} // namespace tarnwell
