// Histories of local items, out of the snapshots of their volumes.
#pragma once

#include "frame/history.h"

namespace tarnwell
{

void ReadLocalHistory(const HistoryQuestion& question, HistoryTaker& taker);

} // namespace tarnwell
