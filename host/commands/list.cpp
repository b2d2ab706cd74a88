#include "columns.h"
#include "commands.h"
#include "output.h"
#include "readable.h"
#include "visit.h"

#include <tarnwell/constants.h>

namespace tarnwell::host
{

namespace
{

char16_t FirstLetter(const ItemFacts& facts)
{
    if (facts.recorded && facts.recorded->kind == TreeRepository)
        return u'm';
    return facts.folder ? u'd' : u'-';
}

// Folder or repository, link, read-only, hidden or a program.
std::u16string Letters(const ItemFacts& facts)
{
    const std::uint32_t attributes = facts.attributes.value.value_or(0);
    std::u16string letters(1, FirstLetter(facts));
    letters += IsLink(facts) ? u'l' : u'-';
    letters += (attributes & AttributeReadOnly) != 0 ? u'r' : u'-';
    if (facts.recorded && facts.recorded->executable)
        return letters + u'x';
    letters += (attributes & AttributeHidden) != 0 ? u'h' : u'-';
    return letters;
}

void PrintRow(const ItemFacts& facts, const std::u16string& name)
{
    const std::u16string size = facts.size.value ? ReadableSize(*facts.size.value) : u"-";
    Print(Letters(facts) + u"  " + RightAligned(size, 10) + u"  " +
          LeftAligned(ReadableTime(facts.modified.value.value_or(0)), 20) + u"  ");
    Print(Shown(name), StyleOf(facts));
    Print(u"\n");
}

} // namespace

int List(const Session& session)
{
    const auto row = [&](const ItemFacts& facts, const std::u16string& name) {
        if (session.line.json)
            Print(ToJson(facts).Line());
        else
            PrintRow(facts, name);
    };
    return VisitItems(session, session.line.recursive, row);
}

} // namespace tarnwell::host
