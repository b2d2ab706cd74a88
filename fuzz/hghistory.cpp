// Any bytes as what the Mercurial client prints of histories: changesets and revisions, whole and
// in pieces.
#include "mercurial/hghistoryparser.h"
#include "mercurial/hgrevision.h"
#include "support/pieces.h"

#include <algorithm>

namespace tarnwell::fuzz
{

namespace
{

bool Same(const HgChange& left, const HgChange& right)
{
    return left.id == right.id && left.time == right.time && left.author == right.author &&
           left.description == right.description && left.files == right.files &&
           left.copies == right.copies;
}

} // namespace

void Try(std::string_view bytes)
{
    const auto changes = ReadTwice(
        bytes, 3, [] { return HgHistoryParser(); }, Same);
    HgNames names("sub/a.txt");
    for (const HgChange& change : changes)
    {
        Expect(change.id.size() == 40, "an id has one size");
        for (const std::string& file : change.files)
            Expect(file.find('\0') == std::string::npos, "no name holds what ends it");
        const auto name = names.NameIn(change);
        const auto isName = [&](const auto& pair) {
            return pair.first == name;
        };
        Expect(!name ||
                   std::find(change.files.begin(), change.files.end(), *name) !=
                       change.files.end() ||
                   std::any_of(change.copies.begin(), change.copies.end(), isName),
               "the item's name is one of the changeset's");
    }
    if (const auto revisions = ReadHgRevisions(bytes))
    {
        for (const HgRevision& revision : *revisions)
            Expect(revision.id.size() == 40, "an id has one size");
    }
}

} // namespace tarnwell::fuzz
