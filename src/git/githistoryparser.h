// Reading the history that the Git client prints when it is asked for one as `githistory` does.
// Starts nothing, and takes any bytes.
#pragma once

#include "runner/feed.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

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
    GitHistoryParser(bool hasNames, std::string path) : hasNames_(hasNames), path_(std::move(path))
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
        return feed_.IsEmpty();
    }

private:
    class Reading;
    // Nothing if what is there is no whole commit yet.
    std::optional<GitCommit> ReadCommit(Reading& reading);
    // False if not all of them are there yet.
    bool ReadNames(Reading& reading, GitCommit& commit);

    const bool hasNames_;
    std::string path_; // the item's name in the commit that comes next
    tarnwell::Feed feed_;
    bool hasEnded_ = false;
};

} // namespace tarnwell
