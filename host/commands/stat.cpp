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

// A line for a fact; nothing for one that the item doesn't have.
template <class T, class F>
std::u16string Row(std::u16string_view name, const Fact<T>& fact, F&& readable)
{
    if (!fact.value && fact.error.empty())
        return {};
    const std::u16string value = fact.value ? readable(*fact.value) : u"unknown: " + fact.error;
    return LeftAligned(name, 16) + value + u"\n";
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
    return Row(u"name", facts.name, text) + Row(u"path", facts.path, text) +
           Row(u"parent", facts.parent, text) + LeftAligned(u"kind", 16) +
           (facts.folder ? u"folder\n" : u"file\n") + Row(u"attributes", facts.attributes, Hex) +
           Row(u"size", facts.size, size) + Row(u"modified", facts.modified, ReadableTime) +
           Row(u"comparable name", facts.comparableName, text) +
           Row(u"comparable url", facts.comparableUrl, text);
}

} // namespace

int Stat(const Session& session)
{
    const ItemFacts facts = FactsOf(FindItem(Open(session, session.line.operands[0])));
    Print(session.line.json ? ToJson(facts).Line() : Readable(facts));
    return exitDone;
}

} // namespace tarnwell::host
