/// @file
/// The identifiers of the classes.
///
/// Six of them can be created through `DllGetClassObject`: the ones named `...FileSystem` but for
/// `VSSFileSystem`. The others only name the source of a failure in its error information. The
/// four `VSS` names are reserved: nothing answers to them.
#pragma once

#include <tarnwell/com.h>

namespace tarnwell
{

namespace detail
{
// All class identifiers differ in their first word only.
constexpr GUID ClassGuid(std::uint32_t first)
{
    return GUID{first, 0xDBDC, 0x4F6D, {0xB8, 0x6B, 0xCD, 0x5C, 0xF1, 0xC9, 0x63, 0xCB}};
}
} // namespace detail

/// The local file system: the file system itself.
inline constexpr GUID CLSID_Win32FileSystem = detail::ClassGuid(0xF4F3F501);
/// The local file system: a file.
inline constexpr GUID CLSID_Win32File = detail::ClassGuid(0xF4F3F502);
/// The local file system: a folder.
inline constexpr GUID CLSID_Win32Folder = detail::ClassGuid(0xF4F3F503);
/// The local file system: what a folder holds.
inline constexpr GUID CLSID_Win32FolderContents = detail::ClassGuid(0xF4F3F504);

/// Perforce: the file system itself.
inline constexpr GUID CLSID_P4FileSystem = detail::ClassGuid(0xF4F3F505);
/// Perforce: a file.
inline constexpr GUID CLSID_P4File = detail::ClassGuid(0xF4F3F506);
/// Perforce: a folder.
inline constexpr GUID CLSID_P4Folder = detail::ClassGuid(0xF4F3F507);
/// Perforce: what a folder holds.
inline constexpr GUID CLSID_P4FolderContents = detail::ClassGuid(0xF4F3F508);

/// Reserved: a file system.
inline constexpr GUID CLSID_VSSFileSystem = detail::ClassGuid(0xF4F3F509);
/// Reserved: a file.
inline constexpr GUID CLSID_VSSFile = detail::ClassGuid(0xF4F3F50A);
/// Reserved: a folder.
inline constexpr GUID CLSID_VSSFolder = detail::ClassGuid(0xF4F3F50B);
/// Reserved: what a folder holds.
inline constexpr GUID CLSID_VSSFolderContents = detail::ClassGuid(0xF4F3F50C);

/// FTP: the file system itself.
inline constexpr GUID CLSID_FTPFileSystem = detail::ClassGuid(0xF4F3F50D);
/// FTP: a file.
inline constexpr GUID CLSID_FTPFile = detail::ClassGuid(0xF4F3F50E);
/// FTP: a folder.
inline constexpr GUID CLSID_FTPFolder = detail::ClassGuid(0xF4F3F50F);
/// FTP: what a folder holds.
inline constexpr GUID CLSID_FTPFolderContents = detail::ClassGuid(0xF4F3F510);

/// Subversion: the file system itself.
inline constexpr GUID CLSID_SVNFileSystem = detail::ClassGuid(0xF4F3F511);
/// Subversion: a file.
inline constexpr GUID CLSID_SVNFile = detail::ClassGuid(0xF4F3F512);
/// Subversion: a folder.
inline constexpr GUID CLSID_SVNFolder = detail::ClassGuid(0xF4F3F513);
/// Subversion: what a folder holds.
inline constexpr GUID CLSID_SVNFolderContents = detail::ClassGuid(0xF4F3F514);

/// One revision.
inline constexpr GUID CLSID_OtherRevision = detail::ClassGuid(0xF4F3F515);
/// A list of revisions.
inline constexpr GUID CLSID_OtherRevisions = detail::ClassGuid(0xF4F3F516);

/// Mercurial: the file system itself.
inline constexpr GUID CLSID_HGFileSystem = detail::ClassGuid(0xF4F3F517);
/// Mercurial: a file.
inline constexpr GUID CLSID_HGFile = detail::ClassGuid(0xF4F3F518);

/// Git: the file system itself.
inline constexpr GUID CLSID_GITFileSystem = detail::ClassGuid(0xF4F3F519);
/// Git: a file.
inline constexpr GUID CLSID_GITFile = detail::ClassGuid(0xF4F3F51A);

/// The type library that lists them (a resource of the Windows module).
inline constexpr GUID LIBID_tarnwell{
    0xFCC74EE0, 0x8B95, 0x4850, {0x8E, 0xFF, 0xE7, 0xF1, 0xB7, 0x43, 0x2B, 0xAE}};

} // namespace tarnwell
