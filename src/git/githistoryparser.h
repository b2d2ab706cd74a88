// Reading the history that the Git client prints when it is asked for one as `githistory` does.
// Starts nothing, and takes any bytes.
#pragma once

#include "runner/feed.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwell
{

// A commit, in the client's bytes.
struct GitCommit
{
    std::string id;
    std::string author;
    std::string description;  // without line feeds at its end
    std::uint64_t authorTime; // FILETIME values
    std::uint64_t commitTime;
    std::string path; // the item's name in it
};

// The texts of a commit are its id, its author's name, both times in Unix seconds, and its message,
// with a NUL behind each. With names follow what it changed: a status and a name, or two of a
// rename, each with a NUL behind it, the first status behind a line feed.
class GitHistoryParser
{
public:
    // With names, the item's is followed from `path` on to those that it had before.
    GitHistoryParser(bool hasNames, std::string path, std::size_t most = mostRecordBytes)
        : hasNames_(hasNames), path_(std::move(path)), before_(path_), feed_(most)
    {
    }

    void Feed(std::string_view bytes)
    {
        feed_.Add(bytes);
    }
    // Nothing more comes.
    void End()
    {
        hasEnded_ = true;
    }

    // The next commit, if it has come as a whole and is one.
    std::optional<GitCommit> Next();

    // At the end, when there is no next one: whether all that came was read.
    bool IsComplete() const
    {
        return feed_.IsComplete();
    }

private:
    // Whether all of them are there, of which the last is only known by what follows.
    bool ReadNames();
    // A status with its names, as above.
    bool ReadChange();

    const bool hasNames_;
    std::string path_;   // the item's name in the commit that is read
    std::string before_; // that in the one before it
    RecordFeed feed_;
    std::vector<std::string> texts_;  // of the commit, as far as they were read
    std::vector<std::string> change_; // of the change, likewise
    bool hasEnded_ = false;
};

} // namespace tarnwell
