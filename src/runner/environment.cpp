#include "runner/environment.h"

#include "platform/wide.h"

#include <algorithm>
#include <memory>

namespace tarnwell
{

namespace
{

char16_t UpperAscii(char16_t unit)
{
    return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - u'a' + u'A') : unit;
}

// The name ends in front of the first "=", so that it is empty in the entries for the folders of
// drives.
bool HasPrefix(std::u16string_view entry, std::u16string_view prefix)
{
    const std::u16string_view name = entry.substr(0, entry.find(u'='));
    return name.size() >= prefix.size() &&
           std::equal(prefix.begin(), prefix.end(), name.begin(),
                      [](char16_t wanted, char16_t unit) { return wanted == UpperAscii(unit); });
}

struct FreeBlock
{
    void operator()(WCHAR* block) const
    {
        FreeEnvironmentStringsW(block);
    }
};

} // namespace

std::u16string WithoutVariables(const char16_t* block, std::u16string_view prefix)
{
    std::u16string kept;
    for (std::u16string_view entry(block); !entry.empty();
         entry = std::u16string_view(entry.data() + entry.size() + 1))
    {
        if (!HasPrefix(entry, prefix))
            kept.append(entry).push_back(u'\0');
    }
    if (!kept.empty())
        kept.push_back(u'\0');
    return kept;
}

std::u16string OwnEnvironmentWithout(std::u16string_view prefix)
{
    const std::unique_ptr<WCHAR, FreeBlock> block(GetEnvironmentStringsW());
    if (!block)
        return {};
    return WithoutVariables(reinterpret_cast<const char16_t*>(block.get()), prefix);
}

} // namespace tarnwell
