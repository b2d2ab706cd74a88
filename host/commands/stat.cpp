#include "columns.h"
#include "commands.h"
#include "facts.h"
#include "items.h"
#include "output.h"
#include "readable.h"
#include "text16.h"
#include "tree.h"

namespace tarnwell::host
{

namespace
{

// Lines for facts that there are, and one for those that the file system doesn't tell at all.
class Table
{
public:
    // Nothing for a fact that the item doesn't have.
    template <class T, class F> Table& Add(Word name, const Fact<T>& fact, F&& readable)
    {
        if (fact.value)
            Add(name, readable(*fact.value));
        else if (fact.isNotOffered)
            notOffered_ += (notOffered_.empty() ? u"" : u", ") + Say(name);
        else if (!fact.error.empty())
            Add(name, Say(Word::Unknown, {fact.error}));
        return *this;
    }
    Table& Add(Word name, const std::u16string& value)
    {
        rows_ += LeftAligned(Say(name), 16) + value + u"\n";
        return *this;
    }

    std::u16string Text() const
    {
        if (notOffered_.empty())
            return rows_;
        return rows_ + LeftAligned(Say(Word::FactsNotTold), 16) + notOffered_ + u"\n";
    }

private:
    std::u16string rows_;
    std::u16string notOffered_;
};

Word KindOf(const ItemFacts& facts)
{
    if (!facts.recorded)
        return facts.folder ? Word::Folder : Word::File;
    switch (facts.recorded->kind)
    {
    case TreeFolder:
        return Word::Folder;
    case TreeLink:
        return Word::Link;
    case TreeRepository:
        return Word::OtherRepository;
    default:
        return facts.recorded->executable ? Word::Program : Word::File;
    }
}

std::u16string Readable(const ItemFacts& facts)
{
    const auto text = [](const std::u16string& value) {
        return Shown(value);
    };
    const auto size = [](std::uint64_t bytes) {
        return bytes < 1024 ? ReadableSize(bytes)
                            : ReadableSize(bytes) + u" (" + Decimal(bytes) + u" B)";
    };
    Table table;
    table.Add(Word::FactName, facts.name, text)
        .Add(Word::FactPath, facts.path, text)
        .Add(Word::FactParent, facts.parent, text)
        .Add(Word::FactKind, Say(KindOf(facts)))
        .Add(Word::FactAttributes, facts.attributes, Hex)
        .Add(Word::FactSize, facts.size, size)
        .Add(Word::FactModified, facts.modified, ReadableTime)
        .Add(Word::FactComparableName, facts.comparableName, text)
        .Add(Word::FactComparableUrl, facts.comparableUrl, text);
    if (facts.recorded)
        table.Add(Word::FactRevision, Shown(facts.recorded->revision))
            .Add(Word::FactContentId, Shown(facts.recorded->contentId));
    return table.Text();
}

} // namespace

int Stat(const Session& session)
{
    const Place place = Open(session, session.line.operands[0]);
    const std::optional<RevisionTree> tree = OpenTree(session, place);
    const ItemFacts facts = tree ? tree->FactsOf(tree->Find()) : FactsOf(FindItem(place));
    Print(session.line.json ? ToJson(facts).Line() : Readable(facts));
    return exitDone;
}

} // namespace tarnwell::host
