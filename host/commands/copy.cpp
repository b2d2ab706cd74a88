#include "commands.h"
#include "copyprogress.h"
#include "impatience.h"
#include "system.h"

#include <optional>

namespace tarnwell::host
{

int Copy(const Session& session)
{
    const std::vector<std::u16string>& operands = session.line.operands;
    if (ParseAddress(operands[0]).kind != ParseAddress(operands[1]).kind)
        throw UsageError{{Word::CopiesWithinOne, {}}};
    const Place source = Open(session, operands[0]);
    const Place target = Open(session, operands[1]);
    const InterruptWatch watch;
    // Others clear their target away.
    std::optional<Impatience> impatience;
    if (source.address.kind->clsid == CLSID_FTPFileSystem)
        impatience.emplace(session.line.json);
    const ComPtr<ICopyProgress> progress = MakeCopyProgress(target.address.text);
    Call([&] { return source.fileSystem->CopyItem(source.Text(), target.Text(), progress.Get()); });
    // Not every way of copying counts a cancelled copy as a failure.
    if (InterruptWatch::Interrupted())
        throw CopyCancelled();
    return exitDone;
}

} // namespace tarnwell::host
