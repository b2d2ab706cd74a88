// Reading what the Mercurial client prints.
#pragma once

#include "workingcopy/workingcopyparser.h"

namespace tarnwell
{

// A record has the whole description of its changeset. A description with an empty line ends the
// list, since the client prints that line empty.
RevisionList ReadHgLog(const std::u16string& path, HANDLE file);

} // namespace tarnwell
