#include "local/localhistory.h"

#include "frame/messages.h"
#include "local/snapshotitem.h"
#include "local/snapshotpaths.h"
#include "platform/wide.h"

#include <algorithm>

namespace tarnwell
{

namespace
{

// From the root of the volume on.
std::u16string NameOnVolume(const std::u16string& live)
{
    const std::optional<DrivePath> path = SplitDrivePath(live);
    std::u16string name(path ? path->rest : std::u16string_view());
    std::replace(name.begin(), name.end(), u'\\', u'/');
    return name;
}

HistoryRecord WorkingCopy(const SnapshotItem& item)
{
    HistoryRecord record;
    record.description = FormatMessageById(MessageId::WorkingCopy);
    record.address = item.live;
    record.path = NameOnVolume(item.live);
    return record;
}

// Who wrote it, and why, no snapshot knows.
HistoryRecord RecordOf(const SnapshotItem& item, const SnapshotEntry& entry,
                       const SnapshotFacts& facts)
{
    HistoryRecord record;
    record.id = entry.token;
    record.address = entry.path;
    record.path = NameOnVolume(item.live);
    record.modifiedTime = facts.writeTime;
    record.revisionTime = entry.time;
    return record;
}

} // namespace

void ReadLocalHistory(const HistoryQuestion& question, HistoryTaker& taker)
{
    taker.HostsPatience().Ask();
    const SnapshotItem item = SnapshotItemOf(question.path, question.revision);
    const HistoryOptions& options = question.options;
    const bool hasCopy = question.Has(HistoryWorkingCopy) && options.skip == 0 &&
                         GetFileAttributesW(Wide(item.live)) != INVALID_FILE_ATTRIBUTES;
    if (hasCopy && !taker.Take(WorkingCopy(item)))
        return;
    HistoryPage page({options.skip, options.count, options.since, options.until});
    bool hasAny = false;
    for (const SnapshotEntry& entry : item.entries)
    {
        taker.HostsPatience().Ask();
        const std::optional<SnapshotFacts> facts = FactsInSnapshot(entry);
        if (!facts)
            continue;
        hasAny = true;
        if (page.Admits(entry.time) &&
            !(taker.Take(RecordOf(item, entry, *facts)) && page.CountDown()))
            return;
    }
    if (!hasAny && !hasCopy)
        ThrowSnapshotFailure(HistoryNoPath, MessageId::HistoryPathNotFound, {item.address});
}

} // namespace tarnwell
