#include "commands.h"
#include "facts.h"
#include "items.h"
#include "output.h"
#include "readable.h"
#include "text16.h"

#include <algorithm>

namespace tarnwell::host
{

namespace
{

std::vector<ItemFacts> SortedFacts(const ComPtr<IFolder>& folder)
{
    std::vector<ItemFacts> all;
    for (const ComPtr<IFileSystemItem>& item : ItemsOf(folder))
        all.push_back(FactsOf(item));
    std::stable_sort(all.begin(), all.end(), [](const ItemFacts& left, const ItemFacts& right) {
        return left.name.value < right.name.value;
    });
    return all;
}

// Folder, link, read-only, hidden.
std::u16string Letters(const ItemFacts& facts)
{
    const std::uint32_t attributes = facts.attributes.value.value_or(0);
    std::u16string letters = facts.folder ? u"d" : u"-";
    letters += (attributes & 0x400) != 0 ? u'l' : u'-';
    letters += (attributes & 0x1) != 0 ? u'r' : u'-';
    letters += (attributes & 0x2) != 0 ? u'h' : u'-';
    return letters;
}

std::u16string Row(const ItemFacts& facts)
{
    const std::u16string size = facts.size.value ? ReadableSize(*facts.size.value) : u"-";
    return Letters(facts) + u"  " + RightAligned(size, 10) + u"  " +
           LeftAligned(ReadableTime(facts.modified.value.value_or(0)), 20) + u"  " +
           Shown(facts.name.value.value_or(u"?")) + u"\n";
}

} // namespace

int List(const Session& session)
{
    const Place place = Open(session, session.line.operands[0]);
    for (const ItemFacts& facts : SortedFacts(FindFolder(place)))
        Print(session.line.json ? ToJson(facts).Line() : Row(facts));
    return exitDone;
}

} // namespace tarnwell::host
