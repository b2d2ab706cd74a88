/// @file
/// File systems: where a host starts.
///
/// All six classes answer to `IFileSystemInit` and `IFileSystem`; all but FTP to
/// `IFileSystemRevisions`; the local one also to `IFileSystemCopyEx`. Addresses are paths for the
/// local file system and URIs for the others. Methods that a file system doesn't offer return
/// E_NOTIMPL, bare.
///
/// A null out pointer is E_POINTER: with a text in the methods of the local file system and in
/// those of `IFileSystemRevisions`, bare in the others.
#pragma once

#include <tarnwell/host.h>
#include <tarnwell/items.h>
#include <tarnwell/revisions.h>

namespace tarnwell
{

/// The first interface of a new file system.
struct IFileSystemInit : ::IUnknown
{
    /// Gives the file system the host object, replacing an earlier one. Call it first.
    /// @param host  What the module asks (see host.h). The file system takes a reference, which it
    ///              keeps until it goes or gets another, and so does each item that it makes: items
    ///              that exist already keep the host object that they were made with. May be null;
    ///              then there are no settings, no credentials and no owner window.
    /// @return S_OK.
    virtual HRESULT STDMETHODCALLTYPE SetHost(::IUnknown* host) = 0;

protected:
    ~IFileSystemInit() = default;
};

/// The file system itself.
struct IFileSystem : ::IUnknown
{
    /// A folder object.
    ///
    /// Git and Mercurial have no folders: E_NOTIMPL with a text.
    /// @param      path       The address. Local paths may be relative to the current folder.
    /// @param      mustExist  Looks the item up: a missing one and a file are failures. With it
    /// clear
    ///                        the object is made all the same, but for a local path that is a file,
    ///                        and `IFolder::Create` can make the folder.
    /// @param[out] folder     The caller's to release; null on failure.
    /// @return S_OK; ERROR_FILE_NOT_FOUND (0x80070002) and, for local paths, ERROR_PATH_NOT_FOUND
    ///         (0x80070003, also for an empty path); E_INVALIDARG for an address that the class
    ///         can't read; for a lookup also E_ACCESSDENIED for missing credentials, and the status
    ///         of the platform's call, of the server, or of the client's run.
    virtual HRESULT STDMETHODCALLTYPE GetFolder(const OLECHAR* path, VARIANT_BOOL mustExist,
                                                IFolder** folder) = 0;

    /// A file object.
    /// @param      path       As above.
    /// @param      mustExist  As above, with the parts exchanged. Git and Mercurial can't look a
    /// file
    ///                        up and fail with E_NOTIMPL and a text: leave it clear there.
    /// @param[out] file       The caller's to release; null on failure.
    /// @return As GetFolder.
    virtual HRESULT STDMETHODCALLTYPE GetFile(const OLECHAR* path, VARIANT_BOOL mustExist,
                                              IFile** file) = 0;

    /// Copies one file over `destination`. Local and FTP only, within the file system; on FTP
    /// between two servers, too, and through this machine.
    ///
    /// Locally, time, permissions and attributes come along. A failed or cancelled copy leaves no
    /// target; on FTP it leaves the part that has arrived.
    /// @param source       The address of the file.
    /// @param destination  The address of its copy, not that of a folder.
    /// @param progress     Asked at each step; used for the time of the call. Null is for copies
    /// that
    ///                     nobody cancels.
    /// @return S_OK; for a cancelled copy ERROR_REQUEST_ABORTED (0x800704D3) locally and E_ABORT on
    ///         FTP, but S_OK where a local path names a data stream; ERROR_SHARING_VIOLATION
    ///         (0x80070020) for a copy onto itself; the status of the platform's call or of the
    ///         server.
    virtual HRESULT STDMETHODCALLTYPE CopyItem(const OLECHAR* source, const OLECHAR* destination,
                                               ICopyProgress* progress) = 0;

    /// Makes an empty file with a new name (vrltmp0, vrltmp1, …) beside another. Local only.
    /// @param      path      The address of the file to stand beside, which needn't exist.
    /// @param[out] tempPath  The new file's path; the caller's to free. The file is the caller's to
    ///                       remove or to rename.
    /// @return S_OK; E_ACCESSDENIED where no file may be made; E_FAIL when a hundred names are
    /// taken;
    ///         E_OUTOFMEMORY.
    virtual HRESULT STDMETHODCALLTYPE CreateTempFile(const OLECHAR* path, BSTR* tempPath) = 0;

    /// Deletes all listed items. Local and FTP only.
    ///
    /// Local items go to the recycle bin or trash; on Linux they stay where there is none, and the
    /// call fails. FTP items go for good. Links go as links. Of a list of which some can't go,
    /// others may be gone.
    /// @param items      The addresses; used for the time of the call. An entry that fails or is
    ///                   empty is skipped; a count that fails or is below 1 is success.
    /// @param noConfirm  Leaves out the question to the user, which is one for the list.
    /// @param recursive  Folders go with all that is in them. Without it they must be empty.
    /// @return S_OK, also for the user's "no"; E_POINTER for a null list; E_FAIL if the shell
    ///         refuses; for FTP the status of the server.
    virtual HRESULT STDMETHODCALLTYPE DeleteItems(IItemList* items, VARIANT_BOOL noConfirm,
                                                  VARIANT_BOOL recursive) = 0;

    /// The operations that the file system offers, as bits that the host defines.
    /// @param      kind   0 and 1 give 7 (local) or 5 (others), any other 65535.
    /// @param      other  Isn't used; may be null.
    /// @param[out] mask   The bits.
    /// @return S_OK.
    virtual HRESULT STDMETHODCALLTYPE GetOperationMask(std::uint32_t kind, ::IUnknown* other,
                                                       std::uint32_t* mask) = 0;

    /// Puts the address of an item in a folder together, as text: nothing is looked up.
    /// @param      base      The folder's address.
    /// @param      relative  The item's name, or several components. Not inspected, but for one
    ///                       leading "/", which the file systems other than the local one drop.
    /// @param[out] result    The caller's to free.
    /// @return S_OK; E_OUTOFMEMORY.
    virtual HRESULT STDMETHODCALLTYPE CombinePath(const OLECHAR* base, const OLECHAR* relative,
                                                  BSTR* result) = 0;

protected:
    ~IFileSystem() = default;
};

/// Copies with choices. Local only.
struct IFileSystemCopyEx : ::IUnknown
{
    /// As `IFileSystem::CopyItem`.
    /// @param source       The path of the file.
    /// @param destination  The path of its copy.
    /// @param flags        `CopyFlag` bits. On Windows those of the platform's own copy. On Linux
    ///                     CopyFailIfExists and CopyLink are honoured, the other four ignored, and
    ///                     any other bit is refused. Without meaning where a path names a data
    ///                     stream.
    /// @param progress     As in CopyItem.
    /// @return As CopyItem; ERROR_FILE_EXISTS (0x80070050) under CopyFailIfExists;
    ///         ERROR_INVALID_PARAMETER (0x80070057) for an unknown flag.
    virtual HRESULT STDMETHODCALLTYPE CopyItemEx(const OLECHAR* source, const OLECHAR* destination,
                                                 std::uint32_t flags, ICopyProgress* progress) = 0;

protected:
    ~IFileSystemCopyEx() = default;
};

/// Earlier versions of items. FTP has none.
///
/// Both methods hide every failure on the way: no client, no server, no right, an address that
/// can't be read, a log that can't be, all read as "no revisions".
struct IFileSystemRevisions : ::IUnknown
{
    /// Whether at least one other revision of the item is known.
    /// @param      path      The address; its own revision, if it has one, doesn't matter.
    /// @param      reserved  Ignored.
    /// @param[out] has       VARIANT_TRUE or VARIANT_FALSE.
    /// @return S_OK.
    virtual HRESULT STDMETHODCALLTYPE HasRevisions(const OLECHAR* path, std::uint32_t reserved,
                                                   VARIANT_BOOL* has) = 0;

    /// The item's revisions, the latest first. Of the local file system these are the versions that
    /// the snapshots of the item's volume hold, for absolute paths; on Linux there are none.
    /// @param      path       As above.
    /// @param      reserved   Ignored.
    /// @param[out] revisions  The caller's to release; null on failure.
    /// @return S_OK; E_OUTOFMEMORY, with a text, if the list can't be made.
    virtual HRESULT STDMETHODCALLTYPE GetRevisions(const OLECHAR* path, std::uint32_t reserved,
                                                   IRevisions** revisions) = 0;

protected:
    ~IFileSystemRevisions() = default;
};

} // namespace tarnwell

TARNWELL_INTERFACE_ID(IFileSystemInit, 674B8100)
TARNWELL_INTERFACE_ID(IFileSystem, 674B8101)
TARNWELL_INTERFACE_ID(IFileSystemCopyEx, 674B8102)
TARNWELL_INTERFACE_ID(IFileSystemRevisions, 674B8103)
