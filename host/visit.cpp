#include "visit.h"

#include "commands.h"
#include "items.h"
#include "tree.h"

namespace tarnwell::host
{

int VisitItems(const Session& session, bool recursive,
               const std::function<void(const ItemFacts&, const std::u16string& name)>& show)
{
    const std::span<const std::u16string> operands = session.line.operands;
    const Place place = Open(session, operands[0]);
    if (const std::optional<RevisionTree> tree = OpenTree(session, place))
    {
        tree->List(recursive, [&](const client::TreeEntry& entry) {
            const ItemFacts facts = tree->FactsOf(entry);
            if (IsWanted(operands.subspan(1), *facts.name.value))
                show(facts, client::Utf16(entry.name));
        });
        return exitDone;
    }
    int exitCode = exitDone;
    WalkFolder(FindFolder(place),
               {recursive, operands.subspan(1), show, [&](const Failure& failure) {
                    PrintFailure(failure, session.line.json);
                    exitCode = exitFailed;
                }});
    return exitCode;
}

Style StyleOf(const ItemFacts& facts)
{
    if (IsLink(facts))
        return Style::Link;
    return facts.folder ? Style::Folder : Style::Plain;
}

} // namespace tarnwell::host
