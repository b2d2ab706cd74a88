#include "commands.h"
#include "json.h"
#include "output.h"

namespace tarnwell::host
{

int MakeTempFile(const Session& session)
{
    const Place place = Open(session, session.line.operands[0]);
    Bstr path;
    Call([&] { return place.fileSystem->CreateTempFile(place.Text(), path.Out()); });
    if (session.line.json)
        Print(JsonObject().Text(u"path", path.View()).Line());
    else
        Print(Shown(path.View()) + u"\n");
    return exitDone;
}

} // namespace tarnwell::host
