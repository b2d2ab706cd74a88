#include "commands.h"
#include "copyprogress.h"
#include "impatience.h"
#include "items.h"
#include "system.h"

#include <optional>

namespace tarnwell::host
{

namespace
{

// FTP asks for progress after each block of this size; other copies don't tell how far they are.
constexpr std::uint64_t blockSize = 65536;

bool IsFtp(const Place& place)
{
    return place.address.kind->clsid == CLSID_FTPFileSystem;
}

ComPtr<ICopyProgress> MakeProgress(const Place& source, const std::u16string& what)
{
    if (!IsFtp(source))
        return MakeCopyProgress(what);
    return MakeBlockProgress(what, SizeOf(FindFile(source)), blockSize);
}

} // namespace

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
    if (IsFtp(source))
        impatience.emplace(session.line.json);
    const ComPtr<ICopyProgress> progress = MakeProgress(source, target.address.text);
    Call([&] { return source.fileSystem->CopyItem(source.Text(), target.Text(), progress.Get()); });
    // Not every way of copying counts a cancelled copy as a failure.
    if (InterruptWatch::Interrupted())
        throw CopyCancelled();
    return exitDone;
}

} // namespace tarnwell::host
