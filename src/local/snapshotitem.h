// What a host means by a local path and a revision: an item in the snapshots of its volume.
#pragma once

#include "frame/exception.h"
#include "local/snapshots.h"
#include "resources/messages.h"

#include <tarnwell/constants.h>

#include <optional>
#include <string>
#include <vector>

namespace tarnwell
{

struct SnapshotItem
{
    std::u16string live; // where the item is today
    // From the revision on that is meant, the newest first. There is at least one.
    std::vector<SnapshotEntry> entries;
    bool isNamed = false;    // a snapshot was named, and is the first of them
    std::u16string revision; // its name, for texts
    std::u16string address;  // as the host gave it, for texts
};

// `path` may also be that of an earlier version, which then is the revision unless one is `wanted`.
// Throws where there are no snapshots, where nobody can be asked for them, and where none has the
// revision's name.
SnapshotItem SnapshotItemOf(const std::u16string& path,
                            const std::optional<std::u16string>& wanted);

// Nothing if the snapshot doesn't have the item. Throws for any other failure.
struct SnapshotFacts
{
    std::uint64_t writeTime = 0; // a FILETIME value
};
std::optional<SnapshotFacts> FactsInSnapshot(const SnapshotEntry& entry);

[[noreturn]] void ThrowSnapshotFailure(HRESULT status, MessageId message,
                                       std::initializer_list<std::u16string> inserts);

// The same for a call of the platform that has failed at `path`.
[[noreturn]] void ThrowSnapshotError(DWORD error, const std::u16string& path);

} // namespace tarnwell
