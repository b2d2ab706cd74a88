#include "runner/environment.h"

#include "platform/clients.h"
#include "platform/wide.h"

#include <algorithm>
#include <memory>
#include <vector>

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
std::u16string_view NameOf(std::u16string_view entry)
{
    return entry.substr(0, entry.find(u'='));
}

bool IsSetBy(std::u16string_view entry, std::span<const char16_t* const> set)
{
    return std::any_of(set.begin(), set.end(),
                       [&](const char16_t* variable) { return NameOf(variable) == NameOf(entry); });
}

bool HasPrefix(std::u16string_view entry, std::u16string_view prefix)
{
    const std::u16string_view name = NameOf(entry);
    return !prefix.empty() && name.size() >= prefix.size() &&
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

std::u16string ChangedEnvironment(const char16_t* block, std::u16string_view prefix,
                                  std::span<const char16_t* const> set)
{
    std::u16string kept;
    for (std::u16string_view entry(block); !entry.empty();
         entry = std::u16string_view(entry.data() + entry.size() + 1))
    {
        if (!HasPrefix(entry, prefix) && !IsSetBy(entry, set))
            kept.append(entry).push_back(u'\0');
    }
    for (const char16_t* const entry : set)
        kept.append(entry).push_back(u'\0');
    if (!kept.empty())
        kept.push_back(u'\0');
    return kept;
}

std::u16string ClientEnvironment(const char16_t* hiddenNames, std::span<const char16_t* const> own)
{
    if (hiddenNames == nullptr && clientVariables.empty() && own.empty())
        return {};
    const std::unique_ptr<WCHAR, FreeBlock> block(GetEnvironmentStringsW());
    if (!block)
        return {};
    std::vector<const char16_t*> set;
    for (const char16_t* const variable : clientVariables)
    {
        if (!IsSetBy(variable, own))
            set.push_back(variable);
    }
    set.insert(set.end(), own.begin(), own.end());
    return ChangedEnvironment(reinterpret_cast<const char16_t*>(block.get()),
                              hiddenNames == nullptr ? u"" : hiddenNames, set);
}

} // namespace tarnwell
