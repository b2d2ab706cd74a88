// Reading the history that the Mercurial client prints when it is asked for one as `hghistory`
// does. Starts nothing, and takes any bytes.
#pragma once

#include "runner/feed.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tarnwell
{

// A changeset, in the client's bytes.
struct HgChange
{
    std::string id;
    std::uint64_t number = 0; // of this repository's own
    std::uint64_t time = 0;   // a FILETIME value
    std::string author;
    std::string description;
    bool hasPath = false; // whether it touches what has the path that was asked for
};

// A changeset is a line "ID NUMBER SECONDS ZONE AUTHOR DESCRIPTION PATH", of which the last is 0 or
// 1, and the two in front of it are numbers of bytes: so many of both texts follow.
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

    RecordFeed feed_;
    // Of the texts of the changeset that is read, in bytes; nothing: it begins with the next line.
    std::optional<std::array<std::uint64_t, 2>> sizes_;
    int texts_ = 0;   // of both, as far as they were read
    HgChange change_; // likewise
};

} // namespace tarnwell
