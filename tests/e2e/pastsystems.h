// Systems whose histories and revisions the host program shows in full, each with the same past.
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace tarnwell::test
{

// A folder "dir" with a past of two revisions. In the first it holds "a.txt" ("old"), "b c.txt" and
// "sub/deep.txt"; in the second "a.txt" is "new text" and "more.txt" is there. The second's message
// is "second\n\nwith more".
struct Past
{
    // Of the folder, without a revision.
    std::u16string address;
    // Names of the two revisions, with what stands in front of them in an address.
    std::u16string first;
    std::u16string second;
    // What the second is called in full.
    std::string secondId;
    // "dir" as it is on the disk; empty where there is no working copy.
    std::u16string workingCopy;
    // What the address is when the folder isn't in a repository at all, and with which status that
    // fails.
    std::u16string nowhere;
    const char* nowhereStatus;
    std::string author;
    std::shared_ptr<const void> keep;

    // Of something in the folder, in a revision.
    std::u16string Of(const std::u16string& name, const std::u16string& revision = {}) const
    {
        return address + u"/" + name + revision;
    }
};

struct PastSystem
{
    const char* name;
    Past (*make)();
    // Whether a revision that isn't there is told apart from a path that isn't.
    std::u16string unknownRevision;
};

// Those that answer the interfaces.
std::vector<PastSystem> PastSystems();

} // namespace tarnwell::test
