// A stand-in for a command-line client: a script of its name, in front of all others on the PATH
// for as long as it lives.
#pragma once

#include "support/environmentvalue.h"
#include "support/tempfolder.h"

#include <string>
#include <vector>

namespace tarnwell::test
{

class StandInClient
{
public:
    // `body` is for the shell. "$REAL" is the real client's path.
    StandInClient(const std::string& name, const std::string& body);

    // The arguments of its runs so far, a run each, separated by blanks.
    std::vector<std::string> Runs() const;

private:
    TempFolder folder_;
    EnvironmentValue path_;
};

} // namespace tarnwell::test
