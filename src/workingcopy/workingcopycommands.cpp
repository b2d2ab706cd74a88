#include "workingcopy/workingcopycommands.h"

#include "platform/wide.h"
#include "runner/outputfile.h"

namespace tarnwell
{

std::shared_ptr<OsHandle> CaptureOutput(const ClientRow& row, ClientCall call,
                                        const std::u16string& address)
{
    std::shared_ptr<OsHandle> output = MakeOutputFile(address, row.source);
    RunIntoFile(row, std::move(call), *output, [&](const ClientOutcome& outcome) {
        ThrowReportedErrors(row, address, outcome.errors);
    });
    return output;
}

bool IsFolderOnDisk(const std::u16string& path)
{
    const DWORD attributes = GetFileAttributesW(Wide(path));
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

} // namespace tarnwell
