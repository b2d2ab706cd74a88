// Asking the file server of this machine.
#pragma once

#include <string>
#include <vector>

namespace tarnwell
{

// The names of the snapshots of the volume behind `share`. None if the server can't be asked,
// refuses, or doesn't answer at once. Only where ntFsControlFile is there.
std::vector<std::u16string> QuerySnapshotTokens(const std::u16string& share);

} // namespace tarnwell
