#include "local/snapshots.h"

#include "frame/handle.h"
#include "local/snapshotanswer.h"
#include "local/snapshotpaths.h"
#include "platform/ntfscontrol.h"
#include "platform/wide.h"

#include <algorithm>
#include <array>
#include <limits>
#include <memory>
#include <new>
#include <span>

namespace tarnwell
{

namespace
{

constexpr ULONG enumerateSnapshots = 0x144064;
constexpr NTSTATUS done = 0;
constexpr NTSTATUS pending = 0x103;

// Whether `answer` was filled. An answer that is still to come is waited for, as it goes into that
// memory, and dropped.
bool Ask(const OsHandle& share, const EventHandle& event, std::span<std::byte> answer)
{
    IO_STATUS_BLOCK outcome{};
    const NTSTATUS status =
        ntFsControlFile(share.Get(), event.Get(), nullptr, nullptr, &outcome, enumerateSnapshots,
                        nullptr, 0, answer.data(), static_cast<ULONG>(answer.size()));
    if (status == pending)
        WaitForSingleObject(event.Get(), INFINITE);
    return status == done && outcome.Status == done;
}

struct Tokens
{
    std::vector<std::u16string> names;
    DWORD error = ERROR_SUCCESS;
};

// The names of the snapshots of the volume behind `share`. None if the server can't be asked, which
// is an error, refuses, or doesn't answer at once.
Tokens SnapshotTokens(const std::u16string& share)
{
    const EventHandle event(CreateEventW(nullptr, 1, 0, nullptr));
    if (!event)
        return {{}, GetLastError()};
    const OsHandle folder(CreateFileW(Wide(share), FILE_LIST_DIRECTORY,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                      FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    if (!folder)
        return {{}, GetLastError()};

    std::array<std::byte, snapshotAnswerStart> start{};
    if (!Ask(folder, event, start))
        return {};
    const std::uint64_t size = SnapshotAnswerSize(start);
    if (size > std::numeric_limits<ULONG>::max())
        return {};
    // Cleared, so that nothing but zeros follows a short answer.
    const std::unique_ptr<std::byte[]> bytes(new (std::nothrow) std::byte[size]());
    if (bytes == nullptr)
        return {{}, ERROR_NOT_ENOUGH_MEMORY};
    const std::span<std::byte> answer(bytes.get(), size);
    if (!Ask(folder, event, answer))
        return {};
    return {ReadSnapshotTokens(answer)};
}

} // namespace

std::vector<SnapshotEntry> ListSnapshots(std::u16string_view path)
{
    return ReadSnapshots(path).entries;
}

SnapshotListing ReadSnapshots(std::u16string_view path)
{
    const std::optional<DrivePath> item = SplitDrivePath(path);
    if (ntFsControlFile == nullptr || !item)
        return {};
    const std::u16string share = std::u16string(u"\\\\localhost\\") + item->letter + u'$';

    Tokens tokens = SnapshotTokens(share);
    SnapshotListing listing{{}, tokens.error};
    for (std::u16string& token : tokens.names)
    {
        SnapshotEntry& entry = listing.entries.emplace_back();
        entry.path.append(share).append(u"\\").append(token).append(u"\\").append(item->rest);
        entry.time = SnapshotTimeFromToken(token);
        entry.token = std::move(token);
    }
    std::stable_sort(listing.entries.begin(), listing.entries.end(),
                     [](const SnapshotEntry& left, const SnapshotEntry& right) {
                         return left.time > right.time;
                     });
    return listing;
}

} // namespace tarnwell
