#include "commands.h"
#include "content.h"
#include "items.h"
#include "output.h"
#include "tree.h"

namespace tarnwell::host
{

namespace
{

Reader Content(const Session& session)
{
    const Place place = Open(session, session.line.operands[0]);
    if (const std::optional<RevisionTree> tree = OpenTree(session, place))
        return tree->Open();
    return Reader(FindFile(place));
}

} // namespace

int Cat(const Session& session)
{
    Reader reader = Content(session);
    for (auto bytes = reader.Next(); !bytes.empty(); bytes = reader.Next())
        PrintBytes({bytes.data(), bytes.size()});
    return exitDone;
}

} // namespace tarnwell::host
