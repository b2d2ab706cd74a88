// What asks a Git repository of the test for its histories in full and its trees.
#pragma once

#include "module/asking.h"
#include "module/gittest.h"

#include <string>

namespace tarnwell::test
{

class GitHistories : public Asking<Git>
{
protected:
    ComPtr<ITree> TreeAt(const std::string& revision = {}) const
    {
        return Tree(Address(u"", revision));
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
