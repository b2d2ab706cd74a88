// Histories of items in Mercurial repositories.
#pragma once

#include "frame/history.h"

#include <string>
#include <string_view>

namespace tarnwell
{

// What stands for the revisions that are wanted, in the client's language, the latest first.
struct HgSelection
{
    std::string id;         // where to begin
    std::string path;       // empty for all of the repository
    std::string followedAt; // a revision that has the file whose names are followed; else empty
};
std::string HgRevisions(const HgSelection& selection, const HistoryOptions& options);

void ReadHgHistory(const HistoryQuestion& question, HistoryTaker& taker);

} // namespace tarnwell
