#include "local/earlierversions.h"

#include "frame/handle.h"
#include "frame/messages.h"
#include "frame/text.h"
#include "local/findrecord.h"
#include "local/snapshotpaths.h"
#include "local/snapshots.h"
#include "platform/username.h"

#include <algorithm>

namespace tarnwell
{

namespace
{

// An item that the snapshot lacks doesn't open. A folder opens like a file.
OsHandle OpenVersion(const SnapshotEntry& entry)
{
    return OsHandle(CreateFileW(Wide(entry.path), FILE_READ_ATTRIBUTES,
                                FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                FILE_FLAG_BACKUP_SEMANTICS, nullptr));
}

// Without numbers and authors, which snapshots don't tell.
std::vector<RevisionRecord> ReadVersions(const std::u16string& path)
{
    std::vector<RevisionRecord> records;
    for (const SnapshotEntry& entry : ListSnapshots(path))
    {
        const OsHandle version = OpenVersion(entry);
        FILETIME written{};
        if (!version || !GetFileTime(version.Get(), nullptr, nullptr, &written))
            continue;
        RevisionRecord& record = records.emplace_back();
        record.uri = entry.path;
        record.modifiedTime = TimeOf(written);
        record.revisionTime = entry.time;
    }
    return records;
}

RevisionRecord LiveItem(const std::u16string& path)
{
    RevisionRecord record;
    record.description = FormatMessageById(MessageId::WorkingCopy);
    record.uri = path;
    return record;
}

} // namespace

bool HasEarlierVersions(const std::u16string& path)
{
    const std::vector<SnapshotEntry> entries =
        ListSnapshots(NormalizeRevisionPath(path).value_or(path));
    return std::any_of(entries.begin(), entries.end(), [](const SnapshotEntry& entry) {
        return static_cast<bool>(OpenVersion(entry));
    });
}

std::vector<RevisionRecord> ListEarlierVersions(const std::u16string& path)
{
    const std::u16string live = NormalizeRevisionPath(path).value_or(path);
    std::vector<RevisionRecord> records = ReadVersions(live);
    if (records.empty())
        return records;
    std::size_t number = records.size();
    for (RevisionRecord& record : records)
        record.id = Decimal(number--);
    records.insert(records.begin(), LiveItem(live));
    // No snapshot knows who wrote the item: every record bears the present user's name.
    std::u16string user;
    FindUserName(user);
    for (RevisionRecord& record : records)
        record.author = user;
    return records;
}

} // namespace tarnwell
