#include "support/process.h"

#include "support/tempfolder.h"

namespace tarnwell::test
{

ProcessRun RunProcess(const std::filesystem::path& program, const ProcessCall& call)
{
    const TempFolder folder;
    const ProcessFiles files{folder.Path() / "input", folder.Path() / "output",
                             folder.Path() / "errors"};
    WriteBytes(folder / u"input", call.input);
    const int exitCode = RunProcess(program, call, files);
    return {exitCode, ReadBytes(folder / u"output"), ReadBytes(folder / u"errors")};
}

} // namespace tarnwell::test
