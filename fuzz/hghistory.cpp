// Any bytes as what the Mercurial client prints of histories: changesets, whole and in pieces,
// revisions, versions and what these are copies of.
#include "mercurial/hghistoryparser.h"
#include "mercurial/hgnames.h"
#include "mercurial/hgrevision.h"
#include "support/pieces.h"

namespace tarnwell::fuzz
{

namespace
{

bool Same(const HgChange& left, const HgChange& right)
{
    return left.id == right.id && left.number == right.number && left.time == right.time &&
           left.author == right.author && left.description == right.description &&
           left.hasPath == right.hasPath;
}

} // namespace

void Try(std::string_view bytes)
{
    const auto changes = ReadTwice(
        bytes, 3, [] { return HgHistoryParser(); }, Same);
    for (const HgChange& change : changes)
        Expect(change.id.size() == 40, "an id has one size");
    if (const auto versions = ReadHgVersions(bytes))
    {
        for (const HgVersion& version : *versions)
            Expect(version.parents.size() <= (version.mayBeCopy ? 1U : 2U),
                   "a version has two parents at most");
    }
    if (const auto origin = ReadHgOrigin(bytes, std::string_view("sub/a.txt").size()))
    {
        if (!origin->name.empty())
            ExpectLeadsDown(origin->name);
    }
    if (const auto revisions = ReadHgRevisions(bytes))
    {
        for (const HgRevision& revision : *revisions)
            Expect(revision.id.size() == 40, "an id has one size");
    }
}

} // namespace tarnwell::fuzz
