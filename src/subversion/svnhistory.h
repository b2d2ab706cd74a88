// Histories of items in Subversion repositories.
#pragma once

#include "frame/history.h"
#include "frame/hostuser.h"

#include <string>

namespace tarnwell
{

// The client's command, without the item that it is for.
std::u16string SvnHistoryArguments(const HistoryOptions& options);

// `host` gives the credentials.
void ReadSvnHistory(const HostUIUser& host, const HistoryQuestion& question, HistoryTaker& taker);

} // namespace tarnwell
