// Reading the history that the Mercurial client prints when it is asked for one as `hghistory`
// does. Starts nothing, and takes any bytes.
#pragma once

#include "runner/feed.h"

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tarnwell
{

// A changeset, in the client's bytes.
struct HgChange
{
    std::string id;
    std::uint64_t time = 0; // a FILETIME value
    std::string author;
    std::string description;
    // Where names are asked for: those that it changed, and those made as copies, with the names
    // of what they are copies of.
    std::vector<std::string> files;
    std::vector<std::pair<std::string, std::string>> copies;
};

// A changeset is a line "ID SECONDS ZONE AUTHOR DESCRIPTION FILES COPIES", of which the last four
// are numbers: so many bytes of both texts follow, then so many names, then so many pairs of names,
// with a NUL behind each name.
class HgHistoryParser
{
public:
    explicit HgHistoryParser(std::size_t most = mostRecordBytes) : feed_(most) {}

    void Feed(std::string_view bytes)
    {
        feed_.Add(bytes);
    }
    // The next changeset, if it has come as a whole and is one.
    std::optional<HgChange> Next();
    // When there is no next one: whether all that came was read.
    bool IsComplete() const
    {
        return feed_.IsComplete();
    }

private:
    // Whether they have come.
    bool ReadHeader();
    bool ReadTexts();
    bool ReadNames();

    // Of the changeset that is read.
    struct Counts
    {
        std::uint64_t author; // bytes
        std::uint64_t description;
        std::uint64_t files; // names
        std::uint64_t copies;
    };

    RecordFeed feed_;
    std::optional<Counts> counts_; // nothing: it begins with the next line
    int texts_ = 0;                // of both, as far as they were read
    HgChange change_;              // likewise
    std::optional<std::string> copy_;
};

// The names that an item had, learnt from its changesets, the latest first.
class HgNames
{
public:
    explicit HgNames(std::string name) : latest_(std::move(name)), names_{latest_} {}

    // The item's name in a changeset. Nothing if an earlier changeset will tell.
    std::optional<std::string> NameIn(const HgChange& change);
    // The latest one that was told.
    const std::string& Latest() const
    {
        return latest_;
    }

private:
    std::string latest_;
    std::set<std::string, std::less<>> names_;
};

} // namespace tarnwell
