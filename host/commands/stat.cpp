#include "commands.h"
#include "facts.h"
#include "items.h"
#include "output.h"
#include "readable.h"
#include "text16.h"

namespace tarnwell::host
{

namespace
{

// Lines for facts that there are, and one for those that the file system doesn't tell at all.
class Table
{
public:
    // Nothing for a fact that the item doesn't have.
    template <class T, class F>
    Table& Add(std::u16string_view name, const Fact<T>& fact, F&& readable)
    {
        if (fact.value)
            Add(name, readable(*fact.value));
        else if (fact.isNotOffered)
            notOffered_ += (notOffered_.empty() ? u"" : u", ") + std::u16string(name);
        else if (!fact.error.empty())
            Add(name, u"unknown: " + fact.error);
        return *this;
    }
    Table& Add(std::u16string_view name, const std::u16string& value)
    {
        rows_ += LeftAligned(name, 16) + value + u"\n";
        return *this;
    }

    std::u16string Text() const
    {
        if (notOffered_.empty())
            return rows_;
        return rows_ + LeftAligned(u"not told here", 16) + notOffered_ + u"\n";
    }

private:
    std::u16string rows_;
    std::u16string notOffered_;
};

std::u16string Readable(const ItemFacts& facts)
{
    const auto text = [](const std::u16string& value) {
        return Shown(value);
    };
    const auto size = [](std::uint64_t bytes) {
        return bytes < 1024 ? ReadableSize(bytes)
                            : ReadableSize(bytes) + u" (" + Decimal(bytes) + u" B)";
    };
    return Table()
        .Add(u"name", facts.name, text)
        .Add(u"path", facts.path, text)
        .Add(u"parent", facts.parent, text)
        .Add(u"kind", facts.folder ? u"folder" : u"file")
        .Add(u"attributes", facts.attributes, Hex)
        .Add(u"size", facts.size, size)
        .Add(u"modified", facts.modified, ReadableTime)
        .Add(u"comparable name", facts.comparableName, text)
        .Add(u"comparable url", facts.comparableUrl, text)
        .Text();
}

} // namespace

int Stat(const Session& session)
{
    const ItemFacts facts = FactsOf(FindItem(Open(session, session.line.operands[0])));
    Print(session.line.json ? ToJson(facts).Line() : Readable(facts));
    return exitDone;
}

} // namespace tarnwell::host
