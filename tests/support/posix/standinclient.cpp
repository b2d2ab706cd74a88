#include "support/posix/standinclient.h"

#include "support/posix/shellrun.h"

#include <cstdlib>
#include <sstream>

namespace tarnwell::test
{

StandInClient::StandInClient(const std::string& name, const std::string& body)
    : path_("PATH", (folder_.Path().string() + ":" + getenv("PATH")).c_str())
{
    const std::filesystem::path script = folder_.Path() / name;
    const std::string real = ShellRun("command -v " + name + " || true");
    WriteBytes(script.u16string(), "#!/bin/sh\nREAL=" + ShellQuoted(real) + "\necho \"$*\" >>" +
                                       ShellQuoted(folder_.Path() / "runs") + "\n" + body + "\n");
    std::filesystem::permissions(script, std::filesystem::perms::owner_all);
}

std::vector<std::string> StandInClient::Runs() const
{
    std::vector<std::string> runs;
    if (!std::filesystem::exists(folder_.Path() / "runs"))
        return runs;
    std::istringstream lines(ReadBytes(folder_ / u"runs"));
    for (std::string line; std::getline(lines, line);)
        runs.push_back(line);
    return runs;
}

} // namespace tarnwell::test
