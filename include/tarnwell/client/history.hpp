/// @file
/// Histories, told in full.
#pragma once

#include <tarnwell/client/sinks.hpp>
#include <tarnwell/history.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tarnwell::client
{

/// Which revisions are wanted, and how. One that is just made asks for all.
struct HistoryQuery
{
    /// Where to begin: a tag, a branch, an id or its beginning, whatever the system understands;
    /// then all of the address is a path. Without it the one in the address, or the latest.
    std::optional<Text> revision;
    /// How many to leave out at the beginning.
    std::uint32_t skip = 0;
    /// How many there may be; 0 is all.
    std::uint32_t count = 0;
    /// Those recorded at this time or later, in 100-nanosecond intervals since 1 January 1601 UTC;
    /// 0 is no bound.
    std::uint64_t since = 0;
    /// Those recorded at this time or earlier; 0 is no bound.
    std::uint64_t until = 0;
    /// Whether a file's history goes on under the names that it had before.
    bool follow = false;
    /// Whether the first entry is the item's present state on the disk. It isn't counted.
    bool workingCopy = false;
};

/// One revision.
struct HistoryEntry
{
    /// The revision's full name; empty for the working copy.
    std::string id;
    /// Who made the change.
    std::string author;
    /// All of the message.
    std::string description;
    /// Opens the revision, in the same file system; the working copy's is a local path.
    std::string address;
    /// The name that the item had then, from the root of the repository on.
    std::string path;
    /// Of the change; 0 if unknown, as for the next.
    std::uint64_t modifiedTime = 0;
    /// Of its recording.
    std::uint64_t revisionTime = 0;
};

/// Takes the next entry; false for "enough".
using TakeRevision = std::function<bool(const HistoryEntry& entry)>;

namespace detail
{

inline HistoryEntry EntryOf(const HistoryRevision& revision)
{
    return {Utf8Of(revision.id),      Utf8Of(revision.author), Utf8Of(revision.description),
            Utf8Of(revision.address), Utf8Of(revision.path),   revision.modifiedTime,
            revision.revisionTime};
}

inline HistoryOptions OptionsOf(const HistoryQuery& query)
{
    HistoryOptions options{};
    options.size = sizeof options;
    options.flags = (query.follow ? std::uint32_t{HistoryFollow} : 0U) |
                    (query.workingCopy ? std::uint32_t{HistoryWorkingCopy} : 0U);
    options.skip = query.skip;
    options.count = query.count;
    options.since = query.since;
    options.until = query.until;
    return options;
}

inline void ReadHistory(IFileSystemHistory& history, const Text& address, const HistoryQuery& query,
                        const TakeRevision& take, const Progress& progress)
{
    const auto sink = MakeSink<IHistorySink, HistoryRevision>(
        [&](const HistoryRevision& revision) { return take(EntryOf(revision)); }, progress);
    const HistoryOptions options = OptionsOf(query);
    const OLECHAR* const revision = query.revision ? query.revision->Get() : nullptr;
    Check([&] { return history.ReadHistory(address.Get(), revision, &options, sink.Get()); });
}

} // namespace detail

} // namespace tarnwell::client
