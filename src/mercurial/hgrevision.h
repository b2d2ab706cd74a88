// One revision of a Mercurial repository, by any of its names.
#pragma once

#include "mercurial/hgserver.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwell
{

struct HgRevision
{
    std::string id;
    std::uint64_t time = 0; // a FILETIME value
    // What the path that was asked for is in it.
    bool isFile = false;
    bool isThere = false; // as a file or a folder
};

// The one that the server's item names: a tag, a branch, a bookmark, an id or its beginning, or a
// number; never an expression. Throws where there is none, or several.
HgRevision FindHgRevision(HgServer& server, const std::string& path, Patience& patience);

// Those that an expression stands for.
std::vector<HgRevision> AskForHgRevisions(HgServer& server, const std::string& expression,
                                          const std::string& path, Patience& patience);

// A line for each revision: "ID SECONDS ZONE FILE THERE", of which the last two are 0 or 1. Nothing
// if there is any other.
std::optional<std::vector<HgRevision>> ReadHgRevisions(std::string_view text);

} // namespace tarnwell
