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

} // namespace tarnwell
