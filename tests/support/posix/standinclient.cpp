#include "support/posix/standinclient.h"

#include <cstdlib>
#include <sstream>

namespace tarnwell::test
{

StandInClient::StandInClient(const std::string& name, const std::string& body)
    : path_("PATH", (folder_.Path().string() + ":" + getenv("PATH")).c_str())
{
    const std::filesystem::path script = folder_.Path() / name;
    // The path behind the script's own folder is where the real one is, but where that is chg.
    WriteBytes(script.u16string(),
               "#!/bin/sh\nREAL=$(PATH=${PATH#*:} command -v " + name +
                   ")\n[ \"${REAL%/*}\" != \"${CHGHG%/*}\" ] || REAL=$CHGHG\necho \"$*\" >>'" +
                   (folder_.Path() / "runs").string() + "'\n" + body + "\n");
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
