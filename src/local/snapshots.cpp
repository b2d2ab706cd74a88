#include "local/snapshots.h"

#include "local/snapshotanswer.h"
#include "local/snapshotpaths.h"
#include "local/snapshotquery.h"
#include "platform/ntfscontrol.h"

#include <algorithm>

namespace tarnwell
{

std::vector<SnapshotEntry> ListSnapshots(std::u16string_view path)
{
    const std::optional<DrivePath> item = SplitDrivePath(path);
    if (ntFsControlFile == nullptr || !item)
        return {};
    const std::u16string share = std::u16string(u"\\\\localhost\\") + item->letter + u'$';

    std::vector<SnapshotEntry> entries;
    for (const std::u16string& token : QuerySnapshotTokens(share))
    {
        SnapshotEntry& entry = entries.emplace_back();
        entry.path.append(share).append(u"\\").append(token).append(u"\\").append(item->rest);
        entry.time = SnapshotTimeFromToken(token);
    }
    std::stable_sort(entries.begin(), entries.end(),
                     [](const SnapshotEntry& left, const SnapshotEntry& right) {
                         return left.time > right.time;
                     });
    return entries;
}

} // namespace tarnwell
