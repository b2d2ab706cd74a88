#include "workingcopy/workingcopycommands.h"

#include "platform/wide.h"
#include "runner/outputfile.h"

namespace tarnwell
{

std::shared_ptr<OsHandle> CaptureOutput(const ClientRow& row, const WorkingCopyCall& call)
{
    std::shared_ptr<OsHandle> output = MakeOutputFile(call.address, row.source);
    ClientCall run;
    run.program = call.program;
    run.arguments = call.arguments;
    run.workingFolder = &call.folder;
    run.outputFile = output->Get();
    const ClientOutcome outcome = RunClient(row, run);
    ThrowReportedErrors(row, call.address, outcome.errors);
    if (!Rewind(*output))
        ThrowClientFailure(row, row.communication, GetLastError());
    return output;
}

bool IsFolderOnDisk(const std::u16string& path)
{
    const DWORD attributes = GetFileAttributesW(Wide(path));
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

} // namespace tarnwell
