#include "commands.h"

namespace tarnwell::host
{

int MakeFolder(const Session& session)
{
    const Place place = Open(session, session.line.operands[0]);
    ComPtr<IFolder> folder;
    Call([&] { return place.fileSystem->GetFolder(place.Text(), VARIANT_FALSE, folder.Out()); });
    const VARIANT_BOOL recursive = session.line.parents ? VARIANT_TRUE : VARIANT_FALSE;
    Call([&] { return folder->Create(recursive); });
    return exitDone;
}

} // namespace tarnwell::host
