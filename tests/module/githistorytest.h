// What asks a Git repository of the test for its histories in full.
#pragma once

#include "module/gittest.h"
#include "support/historysink.h"

#include <string>
#include <vector>

namespace tarnwell::test
{

class GitHistories : public Git
{
protected:
    Outcome Read(const std::u16string& path, HistorySink& sink,
                 HistoryOptions options = Wanted()) const
    {
        const auto histories = system.As<IFileSystemHistory>();
        return OutcomeOf(
            [&] { return histories->ReadHistory(Ole(path), nullptr, &options, &sink); });
    }
    std::vector<HistoryEntry> History(const std::u16string& path,
                                      HistoryOptions options = Wanted()) const
    {
        HistorySink sink;
        EXPECT_THAT(Read(path, sink, options), Succeeded());
        return sink.entries;
    }
    std::vector<std::u16string> Descriptions(const std::u16string& path,
                                             HistoryOptions options = Wanted()) const
    {
        std::vector<std::u16string> found;
        for (const HistoryEntry& entry : History(path, options))
            found.push_back(entry.description);
        return found;
    }
    HRESULT Status(const std::u16string& path, HistoryOptions options = Wanted()) const
    {
        HistorySink sink;
        return Read(path, sink, options).status;
    }
    // A commit of raw bytes, as the checked out branch's next.
    std::string CommitRaw(const std::string& headers, const std::string& message) const
    {
        const std::string tree = repository.Git("write-tree");
        const std::string parent = repository.Git("rev-parse HEAD");
        WriteBytes(repository / u".git/raw",
                   "tree " + tree + "\nparent " + parent + "\n" + headers + "\n\n" + message);
        const std::string commit = repository.Git("hash-object -t commit -w --literally .git/raw");
        repository.Git("reset -q --soft " + commit);
        return commit;
    }
};

} // namespace tarnwell::test
