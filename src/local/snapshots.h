// The snapshots of a volume. Only Windows has them: in the Linux library the list is always empty.
// Nothing of the snapshot files runs there but in tests, with a stand-in for the file server.
#pragma once

#include "platform/win32.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwell
{

struct SnapshotEntry
{
    std::u16string token;   // the snapshot's name
    std::u16string path;    // where the snapshot has the item, if it has it
    std::uint64_t time = 0; // of the snapshot, as a FILETIME
};

// An entry for each snapshot of the volume that `path` is on, the newest first. Empty for a path
// that doesn't begin at the root of a drive, and where there are no snapshots.
std::vector<SnapshotEntry> ListSnapshots(std::u16string_view path);

// The same, and why nobody could be asked: an error of the platform, ERROR_SUCCESS if that was all.
struct SnapshotListing
{
    std::vector<SnapshotEntry> entries;
    DWORD error = ERROR_SUCCESS;
};
SnapshotListing ReadSnapshots(std::u16string_view path);

} // namespace tarnwell
