// Reading what the Git client prints of objects and trees. Starts nothing, and takes any bytes.
#pragma once

#include "runner/feed.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwell
{

// The line in front of an object: "ID TYPE SIZE". `text` is without its line feed.
struct GitObjectLine
{
    std::string_view id;
    std::string_view type;
    std::uint64_t size;
};
// Nothing for any other line, as for that of an object that is missing.
std::optional<GitObjectLine> ReadGitObjectLine(std::string_view text);

// Modes. Old trees have others: what they are is only in the bits of the kind and, of files, in
// that which lets the owner execute them. They are read as one of these.
inline constexpr std::uint32_t gitFileMode = 0100644;
inline constexpr std::uint32_t gitProgramMode = 0100755;
inline constexpr std::uint32_t gitFolderMode = 040000;
inline constexpr std::uint32_t gitLinkMode = 0120000;
inline constexpr std::uint32_t gitRepositoryMode = 0160000;

struct GitEntry
{
    std::uint32_t mode = 0;
    std::string name; // with "/" in between, in a listing
    std::string id;
    std::uint64_t size = 0; // 0 where it isn't told
    bool isMissing = false; // the repository doesn't hold it
};

// The entries of a tree's object, whose ids are of so many bytes. Nothing if it isn't one, or has a
// name in it that is none.
std::optional<std::vector<GitEntry>> ReadGitTree(std::string_view object, std::size_t idBytes);

// The tree of a commit's object and its time, which is a FILETIME value. Nothing without a tree.
struct GitCommitFacts
{
    std::string tree;
    std::uint64_t time = 0;
};
std::optional<GitCommitFacts> ReadGitCommit(std::string_view object);

// A listing, in any pieces: "MODE TYPE ID SIZE<tab>NAME" with blanks around the size, which is "-"
// where there is none and "BAD" where the content is missing, and a NUL behind each.
class GitListingParser
{
public:
    explicit GitListingParser(std::size_t most = mostRecordBytes) : feed_(most) {}

    void Feed(std::string_view bytes)
    {
        feed_.Add(bytes);
    }
    // The next entry, if it has come as a whole and is one.
    std::optional<GitEntry> Next();
    // When there is no next one: whether all that came was read.
    bool IsComplete() const
    {
        return feed_.IsComplete();
    }

private:
    RecordFeed feed_;
};

// Whether this is the whole id of an object.
bool IsGitId(std::string_view text);
// Whether this can be the name of an item: not empty, no "." or "..", no "/" and no NUL.
bool IsGitName(std::string_view name);
// Such names, with "/" in between.
bool IsGitPath(std::string_view path);

} // namespace tarnwell
