// Histories of items in Git repositories.
#pragma once

#include "frame/history.h"
#include "git/gitplace.h"

#include <string>

namespace tarnwell
{

// The client's command. What it is to leave out by itself is in it; the rest is left out here.
std::u16string GitHistoryArguments(const Place& place, const std::u16string& revision,
                                   const HistoryOptions& options);

void ReadGitHistory(const HistoryQuestion& question, HistoryTaker& taker);

} // namespace tarnwell
