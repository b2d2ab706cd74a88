// Reading the records that the Perforce client prints of files and folders. Starts nothing, and
// takes any records.
#pragma once

#include "perforce/p4marshal.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tarnwell
{

// What the type of a file says, as "text+kx", "kxtext" or "symlink".
struct P4Type
{
    bool isLink = false;
    bool isExecutable = false;
    bool hasKeywords = false; // they are replaced in contents, unless the client is told not to
    bool isText = false;      // its lines end as the workspace wants it
};
P4Type ReadP4Type(std::string_view text);

struct P4File
{
    std::string path; // in the depot, as the client takes it
    P4Type type;
    std::uint64_t size = 0; // in bytes
    std::string digest;     // of the content; empty if the server tells none
    bool isThere = false;   // the revision doesn't delete it
};

// The file that a record of "fstat" tells. Nothing for a record that is none.
std::optional<P4File> ReadP4File(const P4Record& record);

// The folder's path that a record of "dirs" tells, likewise.
std::optional<std::string> ReadP4Folder(const P4Record& record);

// What is behind `folder` and a slash in `path`; nothing if that isn't below it, or has a part in
// it that is no name.
std::optional<std::string_view> BelowP4Folder(std::string_view path, std::string_view folder);

} // namespace tarnwell
