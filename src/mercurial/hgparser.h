// Reading what the Mercurial client prints.
#pragma once

#include "workingcopy/workingcopyparser.h"

namespace tarnwell
{

// The whole description of a changeset, line by line. One with an empty line in it ends the list:
// the client leaves that line empty.
std::vector<RevisionRecord> ReadHgLog(const std::u16string& path, HANDLE file);

} // namespace tarnwell
