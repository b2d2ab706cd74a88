// The names under which a followed file was changed, by the versions that the client keeps of each
// name.
#pragma once

#include "mercurial/hghistoryparser.h"
#include "mercurial/hgserver.h"

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwell
{

// A version of what has a name. Ids are as long as the client prints them in lists.
struct HgVersion
{
    std::uint64_t revision = 0; // the number of the first one that had it
    std::string id;
    std::vector<std::string> parents; // of the same name

    // A version that is a copy doesn't tell a first parent.
    bool mayBeCopy = false;
};

// A line of headings, then for each version one whose last words are "REVISION ID PARENT PARENT";
// an id of noughts is none. Nothing if there is any other.
std::optional<std::vector<HgVersion>> ReadHgVersions(std::string_view text);

struct HgOrigin
{
    std::string name;
    std::string id; // of its version, as in lists
};
// What a version is a copy of, by the line "NAME renamed from NAME:ID" or "NAME not renamed", whose
// first name has that many bytes. Nothing if it is neither; an empty name if it is no copy.
std::optional<HgOrigin> ReadHgOrigin(std::string_view text, std::size_t nameSize);

// Asks a client of its own, as another one is telling the changes, and not before a name is wanted:
// most files have but one.
class HgNames
{
public:
    // `at` is a revision that has the file.
    HgNames(const HgItem& item, std::string name, std::string at)
        : server_(item), name_(std::move(name)), at_(std::move(at))
    {
    }

    // The file's name in a change that it was followed to, and that doesn't touch the name that it
    // has now.
    std::string NameIn(const HgChange& change, Patience& patience);

private:
    struct Versions
    {
        std::map<std::string, HgVersion, std::less<>> all; // by their ids
        std::set<std::string, std::less<>> followed;       // those that the file comes of
    };

    void Follow(Patience& patience);
    // Of the version that the file has in `at_`.
    std::string LatestId(Patience& patience);
    Versions& VersionsOf(const std::string& name, Patience& patience);
    std::optional<HgOrigin> OriginOf(const std::string& name, const HgVersion& version,
                                     Patience& patience);
    // Where one version was recorded several times, its revision may be another one.
    std::string NameOfRepeated(const HgChange& change, Patience& patience);
    // The ids of the versions that a revision has of some names.
    std::map<std::string, std::string>
    IdsAt(const std::string& revision, const std::vector<std::string>& names, Patience& patience);
    [[noreturn]] void ThrowBadAnswer() const;

    HgServer server_;
    const std::string name_;
    const std::string at_;
    bool isFollowed_ = false;
    std::map<std::string, Versions> versions_;   // by names
    std::map<std::uint64_t, std::string> names_; // by the numbers of revisions
};

} // namespace tarnwell
