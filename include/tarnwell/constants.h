/// @file
/// Names for the numbers that the interfaces take and give.
///
/// They are the platform's own numbers on Windows, where the system's names may be used as well.
/// Each converts to the `std::uint32_t` of the parameter that it is for; bits are joined by `|`.
#pragma once

#include <tarnwell/com.h>

namespace tarnwell
{

/// How a file is opened: the `access` of `IFile::Open`.
enum Access : std::uint32_t
{
    AccessRead = 0x80000000,
    AccessWrite = 0x40000000,
    /// Local files only.
    AccessReadWrite = 0xC0000000,
};

/// What becomes of a file that exists, or doesn't: the `disposition` of `IFile::Open`.
enum Disposition : std::uint32_t
{
    /// Make a new file; fail if there is one.
    CreateNew = 1,
    /// Make a new file, or empty the one that is there.
    CreateAlways = 2,
    /// Open the file that is there; fail if there is none. The one for reading everywhere.
    OpenExisting = 3,
    /// Open the file that is there, or make a new one.
    OpenAlways = 4,
    /// Open the file that is there and empty it; fail if there is none.
    TruncateExisting = 5,
};

/// What `IFileSystemItem::GetAttributes` gives and `SetAttributes` takes, as bits.
enum Attribute : std::uint32_t
{
    AttributeReadOnly = 0x1,
    AttributeHidden = 0x2,
    AttributeSystem = 0x4,
    AttributeFolder = 0x10,
    AttributeArchive = 0x20,
    /// Nothing of the others.
    AttributeNormal = 0x80,
    /// A link, or something else that leads elsewhere.
    AttributeLink = 0x400,
};

/// The `flags` of `IFileSystemCopyEx::CopyItemEx`, as bits.
enum CopyFlag : std::uint32_t
{
    /// The target must not exist. Honoured on both platforms.
    CopyFailIfExists = 0x1,
    /// Windows only; ignored on Linux.
    CopyRestartable = 0x2,
    /// Windows only; ignored on Linux.
    CopyOpenSourceForWrite = 0x4,
    /// Windows only; ignored on Linux.
    CopyAllowDecryptedDestination = 0x8,
    /// A link is copied as a link. Honoured on both platforms.
    CopyLink = 0x800,
    /// Windows only; ignored on Linux.
    CopyNoBuffering = 0x1000,
};

/// The `total` of `ICopyAmounts::Report` where nobody knows it.
inline constexpr std::uint64_t AmountUnknown = 0xFFFFFFFFFFFFFFFF;

/// Where `ILib7zInStream::Seek` counts from.
enum SeekOrigin : std::uint32_t
{
    SeekFromStart = 0,
    SeekFromPosition = 1,
    SeekFromEnd = 2,
};

/// What the credentials are for: the `kind` of the `IHostCredentials` methods.
enum CredentialKind : std::uint32_t
{
    CredentialsForServer = 0,   ///< FTP and Subversion.
    CredentialsForPerforce = 1, ///< Perforce.
};

/// The one name that `IHostSettings::GetBooleanSetting` is asked: whether the listing of a local
/// folder also holds the named data streams of its files.
inline constexpr char16_t SettingIterateStreams[] = u"IterateStreams";

/// How a history is told: the `flags` of `HistoryOptions`, as bits.
enum HistoryFlag : std::uint32_t
{
    /// A file's history goes on under the names that it had before. With Git merges aren't among
    /// its revisions then.
    HistoryFollow = 0x1,
    /// The first entry stands for the item's present state on the disk, if it is there. It has no
    /// id and no author, and the label "Working Copy", in the user's language, as its description;
    /// its address is a local path. With `skip` it is left out.
    HistoryWorkingCopy = 0x2,
};

/// Why there is no history, no tree or no content, where that has no usual status.
enum HistoryStatus : HRESULT
{
    /// The version-control system's client isn't installed.
    HistoryNoClient = static_cast<HRESULT>(0x80040201),
    /// No repository holds the path.
    HistoryNoRepository = static_cast<HRESULT>(0x80040202),
    /// The path isn't in the history, or not in that revision.
    HistoryNoPath = static_cast<HRESULT>(0x80040203),
    /// There is no such revision, or its name fits several.
    HistoryNoRevision = static_cast<HRESULT>(0x80040204),
    /// The repository is a part of another and doesn't have what is asked for. It is never fetched.
    HistoryIncomplete = static_cast<HRESULT>(0x80040205),
    /// The client can't read its settings or the repository's.
    HistoryBadSettings = static_cast<HRESULT>(0x80040206),
    /// The client has failed for another reason, which its words tell.
    HistoryClientFailed = static_cast<HRESULT>(0x80040207),
    /// What the client printed can't be read.
    HistoryBadAnswer = static_cast<HRESULT>(0x80040208),
    /// A file where a folder is needed, or the other way round.
    HistoryWrongKind = static_cast<HRESULT>(0x80040209),
    /// The server can't be reached, or doesn't answer.
    HistoryServerSilent = static_cast<HRESULT>(0x8004020A),
};

/// What an item of a tree is: the `kind` of `TreeItem`.
enum TreeItemKind : std::uint32_t
{
    TreeFile = 1,
    TreeFolder = 2,
    /// Its content is the path that it leads to.
    TreeLink = 3,
    /// Another repository, of which the tree knows a revision and no more.
    TreeRepository = 4,
};

/// The `flags` of `TreeItem`, as bits.
enum TreeItemFlag : std::uint32_t
{
    /// A file that is a program.
    TreeItemExecutable = 0x1,
    /// A file in which work trees have keywords filled in, where the system records that.
    TreeItemKeywords = 0x2,
    /// A file whose lines may end otherwise in work trees, where the system records that.
    TreeItemLineEnds = 0x4,
};

} // namespace tarnwell
