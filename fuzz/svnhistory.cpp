// Any bytes as the history that the Subversion client prints, whole and in pieces, and an item's
// way through it.
#include "subversion/svnhistoryparser.h"
#include "subversion/svntreeparser.h"
#include "support/pieces.h"

#include <algorithm>

namespace tarnwell::fuzz
{

namespace
{

bool Same(const SvnRevision& left, const SvnRevision& right)
{
    return left.number == right.number && left.author == right.author &&
           left.description == right.description && left.time == right.time &&
           left.changes.size() == right.changes.size();
}

} // namespace

void Try(std::string_view bytes)
{
    const auto revisions = ReadTwice(
        bytes, 5, [] { return SvnHistoryParser(); }, Same);
    std::string path = "/trunk/a.txt";
    for (const SvnRevision& revision : revisions)
    {
        Expect(IsSvnNumber(revision.number), "a revision has a number");
        Expect(!revision.description.ends_with('\n'), "no line feed ends a description");
        const std::string before = SvnPathBefore(revision, path);
        const bool isCopied =
            std::any_of(revision.changes.begin(), revision.changes.end(),
                        [](const SvnChange& change) { return !change.copiedFrom.empty(); });
        Expect(before == path || isCopied, "what isn't copied stays where it is");
        Expect(before.starts_with('/'), "a path begins at the root");
        Expect(before == "/" || IsSvnName(std::string_view(before).substr(1)),
               "a path is of an item's names");
        path = before.size() < 10000 ? before : path;
        RemovesPath(revision, path);
    }
}

} // namespace tarnwell::fuzz
