// Asking the file server of this machine for snapshots (on Linux only in tests, see snapshots.h).
#pragma once

#include <string>
#include <vector>

namespace tarnwell
{

// The names of the snapshots of the volume behind `share`. Empty if the server can't be asked,
// refuses, or doesn't answer at once. To be called only if ntFsControlFile isn't null.
std::vector<std::u16string> QuerySnapshotTokens(const std::u16string& share);

} // namespace tarnwell
