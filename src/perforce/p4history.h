// Histories of items in Perforce depots.
#pragma once

#include "frame/history.h"
#include "frame/hostuser.h"

namespace tarnwell
{

// `host` gives the credentials, and is told of refused ones.
void ReadP4History(const HostUIUser& host, const HistoryQuestion& question, HistoryTaker& taker);

} // namespace tarnwell
