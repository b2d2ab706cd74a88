#include "local/copy.h"

#include "frame/amounts.h"
#include "frame/handle.h"
#include "frame/paths.h"
#include "frame/status.h"
#include "frame/text.h"
#include "local/copystreams.h"
#include "platform/extendedcopy.h"

namespace tarnwell
{

namespace
{

bool CloseLibrary(HMODULE library)
{
    ReleaseExtendedCopy(library);
    return true;
}

using ExtendedCopyLibrary = Handle<HMODULE, CloseLibrary>;

// The host, as the platform's copy carries it along.
struct Watcher
{
    ICopyProgress* progress; // may be null
    Amounts amounts;
};

// Preset to yes, unlike copies through streams (copystreams.cpp), on purpose: a host that doesn't
// write the value goes on here and cancels there.
DWORD CALLBACK ReportCopyProgress(LARGE_INTEGER total, LARGE_INTEGER done, LARGE_INTEGER,
                                  LARGE_INTEGER, DWORD, DWORD, HANDLE, HANDLE, LPVOID data)
{
    const Watcher& watcher = *static_cast<const Watcher*>(data);
    watcher.amounts.Report(static_cast<std::uint64_t>(done.QuadPart),
                           static_cast<std::uint64_t>(total.QuadPart));
    VARIANT_BOOL keepGoing = VARIANT_TRUE;
    if (watcher.progress != nullptr)
        watcher.progress->QueryContinue(&keepGoing);
    return IsTrue(keepGoing) ? PROGRESS_CONTINUE : PROGRESS_CANCEL;
}

HRESULT StatusOfCopy(BOOL done)
{
    return done ? S_OK : EnsureFailed(StatusFromLastError());
}

// Looked for anew at each copy, as hosts expect it.
HRESULT CopyExtended(const std::u16string& source, const std::u16string& destination, DWORD flags,
                     ICopyProgress* progress)
{
    HMODULE found = nullptr;
    const ExtendedCopy copy = FindExtendedCopy(&found);
    const ExtendedCopyLibrary library(found);
    if (copy == nullptr)
        return StatusFromError(ERROR_CALL_NOT_IMPLEMENTED);
    Watcher watcher{progress, Amounts(progress)};
    return StatusOfCopy(
        copy(Wide(source), Wide(destination), &ReportCopyProgress, &watcher, nullptr, flags));
}

} // namespace

HRESULT CopyByPath(IFileSystem& system, const std::u16string& source,
                   const std::u16string& destination, DWORD flags, ICopyProgress* progress)
{
    if (SplitStreamPath(source) || SplitStreamPath(destination))
        return CopyThroughStreams(system, source, destination, progress);
    const HRESULT status = CopyExtended(source, destination, flags, progress);
    if (status != StatusFromError(ERROR_CALL_NOT_IMPLEMENTED))
        return status;
    // Nobody is asked, and the flags are lost.
    return StatusOfCopy(CopyFileW(Wide(source), Wide(destination), 0));
}

} // namespace tarnwell
