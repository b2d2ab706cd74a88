// The earlier versions of an item, which the snapshots of its volume hold.
#pragma once

#include "frame/revisions.h"

#include <string>
#include <vector>

namespace tarnwell
{

// `path` may also be that of an earlier version, and then means the live item.
bool HasEarlierVersions(const std::u16string& path);

// The live item, and then the newest version first; nothing at all if there are no earlier
// versions.
std::vector<RevisionRecord> ListEarlierVersions(const std::u16string& path);

} // namespace tarnwell
