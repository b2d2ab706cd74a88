// What asks the stand-in for the Perforce client for histories in full.
#pragma once

#include "module/asking.h"
#include "module/perforcetest.h"

#include <string>
#include <vector>

namespace tarnwell::test
{

class P4Histories : public Asking<PerforceClientTest>
{
protected:
    P4Histories() : Asking("only the stand-in tells how it was called, and fails as it is told to")
    {
    }

    // The arguments of the runs that the call made.
    std::vector<std::string> RunsOf(const std::u16string& path, HistoryOptions options = Wanted(),
                                    const MaybeRevision& revision = {})
    {
        depot_.TakeRuns();
        HistorySink sink;
        Read(path, sink, options, revision);
        return depot_.TakeRuns();
    }
};

} // namespace tarnwell::test
