// Which revisions the client's ways to name them mean, as its documentation tells.
#pragma once

#include "support/perforce/depot.h"

#include <string>
#include <vector>

namespace tarnwell::test::perforce
{

// Whether `pattern`, which may end in "..." or hold "*", names the file.
bool Names(const std::string& pattern, const std::string& path);

// The revisions up to the one that `specifier` names, the oldest first; those in between, where it
// is a range. Throws a Complained for a label that isn't there.
std::vector<const Revision*> RevisionsUpTo(const Depot& depot, const File& file,
                                           const std::string& specifier);

// The revision itself; null if the file has none there.
const Revision* RevisionOf(const Depot& depot, const File& file, const std::string& specifier);

// A failure that the server tells.
struct Complained
{
    int severity;
    int generic;
    std::string words;
};

} // namespace tarnwell::test::perforce
