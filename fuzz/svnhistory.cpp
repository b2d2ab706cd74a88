// Any bytes as the history that the Subversion client prints, whole and in pieces, and an item's
// way through it.
#include "subversion/svnhistoryparser.h"
#include "support/target.h"

#include <algorithm>
#include <vector>

namespace tarnwell::fuzz
{

namespace
{

struct Read
{
    std::vector<SvnRevision> revisions;
    bool isComplete = false;
};

Read ReadIn(std::string_view bytes, std::size_t piece)
{
    SvnHistoryParser parser;
    Read read;
    while (!bytes.empty())
    {
        parser.Feed(bytes.substr(0, piece));
        bytes.remove_prefix(std::min(piece, bytes.size()));
        while (std::optional<SvnRevision> revision = parser.Next())
            read.revisions.push_back(std::move(*revision));
    }
    read.isComplete = parser.IsComplete();
    return read;
}

bool Same(const SvnRevision& left, const SvnRevision& right)
{
    return left.number == right.number && left.author == right.author &&
           left.description == right.description && left.time == right.time &&
           left.changes.size() == right.changes.size();
}

} // namespace

void Try(std::string_view bytes)
{
    const Read whole = ReadIn(bytes, bytes.size());
    const Read pieces = ReadIn(bytes, 5);
    Expect(whole.isComplete == pieces.isComplete &&
               std::equal(whole.revisions.begin(), whole.revisions.end(), pieces.revisions.begin(),
                          pieces.revisions.end(), Same),
           "pieces are read as the whole is");
    std::string path = "/trunk/a.txt";
    for (const SvnRevision& revision : whole.revisions)
    {
        Expect(IsSvnNumber(revision.number), "a revision has a number");
        Expect(!revision.description.ends_with('\n'), "no line feed ends a description");
        const std::string before = SvnPathBefore(revision, path);
        const bool isCopied =
            std::any_of(revision.changes.begin(), revision.changes.end(),
                        [](const SvnChange& change) { return !change.copiedFrom.empty(); });
        Expect(before == path || isCopied, "what isn't copied stays where it is");
        Expect(before.starts_with('/'), "a path begins at the root");
        path = before.size() < 10000 ? before : path;
        RemovesPath(revision, path);
    }
}

} // namespace tarnwell::fuzz
