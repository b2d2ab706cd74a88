#include "local/snapshotitem.h"

#include "frame/handle.h"
#include "frame/messages.h"
#include "frame/status.h"
#include "frame/trim.h"
#include "local/findrecord.h"
#include "local/snapshotpaths.h"

#include <algorithm>

namespace tarnwell
{

namespace
{

bool IsMissing(DWORD error)
{
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
}

// A name that is one part of a path, whatever the server says.
bool IsName(const SnapshotEntry& entry)
{
    return entry.token.starts_with(u"@GMT-") &&
           entry.token.find_first_of(u"\\/") == std::u16string::npos;
}

// Why the file server couldn't be asked.
[[noreturn]] void ThrowUnasked(DWORD error, const std::u16string& address)
{
    if (error == ERROR_ACCESS_DENIED)
        ThrowSnapshotFailure(E_ACCESSDENIED, MessageId::RepositoryAccessDenied, {address, u""});
    // A volume that isn't shared has no snapshots to be seen.
    if (IsMissing(error) || error == ERROR_BAD_NET_NAME)
        ThrowSnapshotFailure(HistoryNoRepository, MessageId::SnapshotsNotFound, {address});
    if (error == ERROR_BAD_NETPATH)
        ThrowSnapshotFailure(HistoryServerSilent, MessageId::ServerSilent, {address, u""});
    ThrowSnapshotError(error, address);
}

// The part of an earlier version's path that names its snapshot.
std::u16string TokenIn(const std::u16string& path, const std::vector<SnapshotEntry>& entries)
{
    const auto found =
        std::find_if(entries.begin(), entries.end(), [&](const SnapshotEntry& entry) {
            return path.find(u"\\" + entry.token + u"\\") != std::u16string::npos;
        });
    return found == entries.end() ? std::u16string() : found->token;
}

} // namespace

SnapshotItem SnapshotItemOf(const std::u16string& path, const std::optional<std::u16string>& wanted)
{
    SnapshotItem item;
    item.address = path;
    const std::optional<std::u16string> live = NormalizeRevisionPath(path);
    item.live = live.value_or(path);
    SnapshotListing listing = ReadSnapshots(item.live);
    if (listing.error != ERROR_SUCCESS)
        ThrowUnasked(listing.error, path);
    std::erase_if(listing.entries, [](const SnapshotEntry& entry) { return !IsName(entry); });
    if (listing.entries.empty())
        ThrowSnapshotFailure(HistoryNoRepository, MessageId::SnapshotsNotFound, {path});
    item.entries = std::move(listing.entries);
    item.revision = wanted.value_or(live ? TokenIn(path, item.entries) : std::u16string());
    if (item.revision.empty())
        return item;
    const auto first =
        std::find_if(item.entries.begin(), item.entries.end(),
                     [&](const SnapshotEntry& entry) { return entry.token == item.revision; });
    if (first == item.entries.end())
        ThrowSnapshotFailure(HistoryNoRevision, MessageId::RevisionNotFound, {item.revision, u""});
    item.entries.erase(item.entries.begin(), first);
    item.isNamed = true;
    return item;
}

// A folder opens like a file.
std::optional<SnapshotFacts> FactsInSnapshot(const SnapshotEntry& entry)
{
    const OsHandle version(CreateFileW(Wide(entry.path), FILE_READ_ATTRIBUTES,
                                       FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                       FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    if (!version)
    {
        const DWORD error = GetLastError();
        if (IsMissing(error))
            return std::nullopt;
        ThrowSnapshotError(error, entry.path);
    }
    FILETIME written{};
    if (!GetFileTime(version.Get(), nullptr, nullptr, &written))
        ThrowSnapshotError(GetLastError(), entry.path);
    return SnapshotFacts{TimeOf(written)};
}

void ThrowSnapshotFailure(HRESULT status, MessageId message,
                          std::initializer_list<std::u16string> inserts)
{
    throw ComException(status, std::u16string(Trimmed(FormatMessageById(message, inserts))),
                       At(nullptr));
}

void ThrowSnapshotError(DWORD error, const std::u16string& path)
{
    const HRESULT status = EnsureFailed(StatusFromError(error));
    throw ComException(status, FormatMessageWithStatus(MessageId::OpenFailed, status, {path}),
                       At(nullptr));
}

} // namespace tarnwell
