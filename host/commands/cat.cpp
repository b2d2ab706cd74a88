#include "commands.h"
#include "content.h"
#include "items.h"
#include "output.h"

namespace tarnwell::host
{

int Cat(const Session& session)
{
    Reader reader(FindFile(Open(session, session.line.operands[0])));
    for (auto bytes = reader.Next(); !bytes.empty(); bytes = reader.Next())
        PrintBytes({bytes.data(), bytes.size()});
    return exitDone;
}

} // namespace tarnwell::host
