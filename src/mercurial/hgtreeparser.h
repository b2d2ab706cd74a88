// Reading what the Mercurial client prints of a revision's files, and finding items among them.
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

enum class HgKind
{
    File,
    Program,
    Link,
    Folder,
    Repository
};

struct HgEntry
{
    std::string path;
    std::string id; // none of folders
    HgKind kind = HgKind::File;
};

// A revision's files, in any pieces: "ID TYPE" and the path, with a NUL behind each. The type is
// empty, "*" of a program or "@" of a link.
class HgManifestParser
{
public:
    HgManifestParser() = default;
    explicit HgManifestParser(std::size_t most) : feed_(most) {}

    void Feed(std::string_view bytes)
    {
        feed_.Add(bytes);
    }
    // The next file, if it has come as a whole and is one.
    std::optional<HgEntry> Next();
    // When there is no next one: whether all that came was read.
    bool IsComplete() const
    {
        return feed_.IsComplete();
    }

private:
    RecordFeed feed_;
    std::optional<std::string> facts_; // of the file that is read
};

// Sizes, in any pieces: the path and the number of bytes, with a NUL behind each.
struct HgSize
{
    std::string path;
    std::uint64_t size = 0;
};
class HgSizeParser
{
public:
    HgSizeParser() = default;
    explicit HgSizeParser(std::size_t most) : feed_(most) {}

    void Feed(std::string_view bytes)
    {
        feed_.Add(bytes);
    }
    std::optional<HgSize> Next();
    bool IsComplete() const
    {
        return feed_.IsComplete();
    }

private:
    RecordFeed feed_;
    std::optional<std::string> path_; // of the size that is read
};

// The repositories inside, by the file that keeps their revisions: "REVISION PATH" in each line.
// Nothing if it isn't one.
std::optional<std::vector<HgEntry>> ReadHgRepositories(std::string_view file);

// Whether this can be the path of an item: names that aren't empty, "." or "..", with "/" in
// between.
bool IsHgPath(std::string_view path);

// The entries of a revision by their paths, in the order of their bytes.
class HgManifest
{
public:
    using Position = std::vector<HgEntry>::const_iterator;
    struct Range
    {
        Position begin;
        Position end;
    };

    explicit HgManifest(std::vector<HgEntry> entries = {});

    // What is at the path; folders are where something is below them. Nothing where nothing is.
    std::optional<HgEntry> Find(std::string_view path) const;
    // What is below a folder, which is empty for all.
    Range Below(std::string_view folder) const;
    // Those of the folder itself.
    std::vector<HgEntry> ChildrenOf(std::string_view folder) const;

private:
    std::vector<HgEntry> entries_;
};

} // namespace tarnwell
