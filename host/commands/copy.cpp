#include "commands.h"
#include "copyprogress.h"
#include "system.h"

namespace tarnwell::host
{

int Copy(const Session& session)
{
    const std::vector<std::u16string>& operands = session.line.operands;
    if (ParseAddress(operands[0]).kind != ParseAddress(operands[1]).kind)
        throw UsageError("\"cp\" copies within one file system; see \"cat\" and \"put\".");
    const Place source = Open(session, operands[0]);
    const Place target = Open(session, operands[1]);
    const InterruptWatch watch;
    const ComPtr<ICopyProgress> progress = MakeCopyProgress(target.address.text);
    Call([&] { return source.fileSystem->CopyItem(source.Text(), target.Text(), progress.Get()); });
    // Not every way of copying counts a cancelled copy as a failure.
    if (InterruptWatch::Interrupted())
        throw Failure{E_ABORT, u"The copy was cancelled."};
    return exitDone;
}

} // namespace tarnwell::host
