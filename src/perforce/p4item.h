// What a host means by a path and a revision in Perforce depots.
#pragma once

#include "addressed/uri.h"

#include <optional>
#include <string>
#include <string_view>

namespace tarnwell
{

struct P4Item
{
    UriParts parts;         // of the address; the path in it isn't used
    std::string path;       // as the client takes it, as "//depot/a%40b"; "//" for all depots
    bool isFolder = false;  // it was written with a slash at its end
    std::string revision;   // as the client takes it, with its mark; empty for the latest
    std::u16string given;   // the revision, for texts
    std::u16string address; // as the host gave it, for texts

    std::u16string RevisionText() const
    {
        return given.empty() ? u"#head" : given;
    }
    // The address of a path of the depot, with a revision.
    std::u16string AddressOf(std::string_view depotPath, const std::u16string& revisionOfIt) const;
};

// `address` is one, whose revision counts unless one is `wanted`. Throws for an address that can't
// be, and for what can't be a revision or a name.
P4Item P4ItemOf(const std::u16string& address, const std::optional<std::u16string>& wanted);

// The revision as the client takes it. `text` may begin with its mark; without one a number is that
// of a change, "head" and "have" are what they are behind "#", and any other text is a label, a
// workspace or a date. Nothing for what would mean several, or is no name.
std::optional<std::string> P4RevisionOf(std::u16string_view text);

// Whether the revision is a moment of all depots' history. The others (a file's number, "have", a
// label, a workspace, the files of one change) are sets of revisions.
bool IsP4Moment(std::string_view revision);

} // namespace tarnwell
