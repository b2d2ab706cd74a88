/// @file
/// Histories, told in full: the interface beside `IFileSystemRevisions` for hosts that want all of
/// a history, a page of it, or the reason why there is none.
///
/// Here a failure is one. No client, no repository, no such path, no such revision, no right and
/// settings that can't be read each have a status of their own (`HistoryStatus` in constants.h) and
/// a text. What the user or the repository has set up changes nothing, and runs no program.
///
/// docs/history-and-trees.md says which file systems answer. Others have `IFileSystemRevisions`.
#pragma once

#include <tarnwell/constants.h>
#include <tarnwell/host.h>

namespace tarnwell
{

/// Which revisions are wanted, and how. A value-initialised one, with its size set, asks for all.
struct HistoryOptions
{
    /// The size of this structure, in bytes. Any other is refused.
    std::uint32_t size;
    /// `HistoryFlag` bits. Unknown ones are refused.
    std::uint32_t flags;
    /// How many revisions to leave out at the beginning. The working copy isn't counted.
    std::uint32_t skip;
    /// How many to give at most; 0 is all. The working copy isn't counted.
    std::uint32_t count;
    /// Those recorded at this time or later, as a `FILETIME` value, of which whole seconds count; 0
    /// is no bound. A revision before it ends the walk along its line: where a clock was wrong,
    /// earlier revisions of a later time are left out.
    std::uint64_t since;
    /// Those recorded at this time or earlier, likewise; 0 is no bound.
    std::uint64_t until;
};

/// One revision, as it is given to `IHistorySink::Take`. The texts end with that call.
struct HistoryRevision
{
    /// The revision's full name; empty for the working copy.
    const OLECHAR* id;
    /// Who made the change.
    const OLECHAR* author;
    /// All of the message that the revision was recorded with, without line feeds at its end.
    const OLECHAR* description;
    /// What opens this revision, in the same file system; for the working copy a local path. In a
    /// local path, and so in an address with one, a backslash is a separator on Windows: where it
    /// is a part of the item's name, only `path` says what is meant.
    const OLECHAR* address;
    /// The name that the item had then, from the root of the repository on, with "/" in between;
    /// empty for the root.
    const OLECHAR* path;
    /// The time of the change. Times are `FILETIME` values, 0 if unknown.
    std::uint64_t modifiedTime;
    /// The time of its recording, which `since` and `until` look at.
    std::uint64_t revisionTime;
};

/// What takes a history; implemented by the host. It is used for the time of the call that it is
/// given to, on the thread of that call.
///
/// `ICopyProgress::QueryContinue` is asked once before the client is started and then at least ten
/// times a second while it runs, but for the time that `Take` takes. An answer of VARIANT_FALSE
/// ends the client at once, with all that it has started. `*keepGoing` is VARIANT_TRUE before the
/// call, and the result of the method isn't looked at.
struct IHistorySink : ICopyProgress
{
    /// Takes the next revision, the latest first. The first ones come while the client still runs.
    /// @param revision  The module's; it ends with this call.
    /// @return S_OK; S_FALSE for "enough", which ends the client and makes the history a success; a
    ///         failure, which ends the client and is the status of the whole call.
    virtual HRESULT STDMETHODCALLTYPE Take(const HistoryRevision* revision) = 0;

protected:
    ~IHistorySink() = default;
};

/// Answered by file systems that tell their histories in full.
struct IFileSystemHistory : ::IUnknown
{
    /// Gives the revisions of an item, one by one as they are found.
    ///
    /// The item is a file, a folder, or with the path of the repository all of it. It needn't exist
    /// any more. A revision in which the item didn't change isn't a revision of it.
    /// @param path      The address, or for working copies the local path. In an address what
    ///                  follows the last "#" is the revision to begin at, unless `revision` is
    ///                  given; a local path is taken as it stands.
    /// @param revision  Where to begin: a name that the system understands, as a tag, a branch or
    ///                  an id, also a short one. Null takes the address's. With another text all of
    ///                  `path` is a path. Without any revision the latest is meant: that which is
    ///                  checked out.
    /// @param options   What is wanted; null asks for all.
    /// @param sink      Takes the revisions. What it was given before a failure is a part of an
    ///                  answer that there is none of.
    /// @return S_OK, with a text all failures: E_POINTER for a null `sink`; E_INVALIDARG for an
    ///         address or options that can't be; E_ABORT after an answer of `QueryContinue`;
    ///         `HistoryNoClient`, `HistoryNoRepository`, `HistoryNoPath` (also if the item never
    ///         was in the history), `HistoryNoRevision` (also where nothing was committed yet),
    ///         `HistoryIncomplete`, `HistoryServerSilent`, `HistoryBadSettings`,
    ///         `HistoryClientFailed`, `HistoryBadAnswer`; E_ACCESSDENIED where the system
    ///         refuses access to the repository; the status of a failed call of the platform; what
    ///         `Take` returned, bare.
    virtual HRESULT STDMETHODCALLTYPE ReadHistory(const OLECHAR* path, const OLECHAR* revision,
                                                  const HistoryOptions* options,
                                                  IHistorySink* sink) = 0;

protected:
    ~IFileSystemHistory() = default;
};

} // namespace tarnwell

TARNWELL_INTERFACE_ID(IFileSystemHistory, 674B8104)
TARNWELL_INTERFACE_ID(IHistorySink, 674B8145)
