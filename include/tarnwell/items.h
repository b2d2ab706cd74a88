/// @file
/// Items: files, folders, and the contents of folders.
///
/// An item is a snapshot of one address. Local items hold the facts found when they were made;
/// items of the other file systems ask for them on the first call that needs one, and keep the
/// answer. Nothing is refreshed. An item may stand for something that doesn't exist yet.
///
/// A null out pointer is E_POINTER in every method: with a text for local items and for the two
/// sizes, bare for the others.
#pragma once

#include <tarnwell/streams.h>

namespace tarnwell
{

/// Answered by every file and every folder.
///
/// The facts of a Git or Mercurial file can't be asked for: its time, attributes and sizes fail
/// with E_NOTIMPL and a text. Its names and addresses are there.
struct IFileSystemItem : ::IUnknown
{
    /// The time of the last change.
    /// @param[out] fileTime  In 100-nanosecond intervals since 1 January 1601 UTC; 0 if it isn't
    ///                       known, which holds for what doesn't exist in an address system. A
    ///                       local item that doesn't exist has the time of its making.
    /// @return S_OK; E_NOTIMPL for Git and Mercurial; the failures of the client or server, which
    ///         a later call tries again: E_ACCESSDENIED for missing credentials,
    ///         ERROR_FILE_NOT_FOUND (0x80070002), others as the platform numbers them.
    virtual HRESULT STDMETHODCALLTYPE GetModifiedTime(std::uint64_t* fileTime) = 0;

    /// What the item is.
    /// @param[out] attributes  `Attribute` bits. File systems other than the local one give exactly
    ///                         16 for a folder, 128 for a writable file and 129 for a read-only
    ///                         one. 0 for a local item that doesn't exist.
    /// @return As GetModifiedTime.
    virtual HRESULT STDMETHODCALLTYPE GetAttributes(std::uint32_t* attributes) = 0;

    /// Changes the attributes on the disk and in this item. Local only.
    /// @param attributes  `Attribute` bits. On Linux the read-only bit takes all write permissions
    ///                    away or gives the owner's; the others only reach this item.
    /// @return S_OK; the status of the platform's call; E_NOTIMPL, bare, elsewhere.
    virtual HRESULT STDMETHODCALLTYPE SetAttributes(std::uint32_t attributes) = 0;

    /// The last component.
    /// @param[out] name  The caller's to free. Empty for the root of a file system. Perforce, Git
    ///                   and Mercurial leave a revision in it, Subversion doesn't.
    /// @return S_OK; E_OUTOFMEMORY; E_INVALIDARG for an address that can't be read.
    virtual HRESULT STDMETHODCALLTYPE GetName(BSTR* name) = 0;

    /// The address of the containing folder.
    /// @param[out] path  The caller's to free. Empty for a local path of one component.
    /// @return As GetName.
    virtual HRESULT STDMETHODCALLTYPE GetParentPath(BSTR* path) = 0;

    /// The full address.
    /// @param[out] path  The caller's to free. As held: with the revision, and of addresses with a
    ///                   user and a password, with both. Don't log it.
    /// @return S_OK; E_OUTOFMEMORY.
    virtual HRESULT STDMETHODCALLTYPE GetPath(BSTR* path) = 0;

    /// Deletes the item for good. Local and FTP only.
    /// @param noConfirm  Leaves out the question to the user. Otherwise the module asks by a
    /// dialog,
    ///                   owned by the host's window, or on Linux on the terminal.
    /// @param recursive  A folder goes with all that is in it; links are removed, never followed.
    ///                   Without it a folder must be empty, and with `noConfirm` set a local item
    ///                   must be a file. Of no meaning for files.
    /// @return S_OK, also for a "no" in FTP, and in local deletes on Windows where the shell says
    ///         so: look again if it matters. E_FAIL if the shell refuses; the status of the
    ///         platform's call or of the server; E_NOTIMPL, bare, elsewhere.
    virtual HRESULT STDMETHODCALLTYPE Delete(VARIANT_BOOL noConfirm, VARIANT_BOOL recursive) = 0;

protected:
    ~IFileSystemItem() = default;
};

/// Local files only. Its failures leave a text, although `ISupportErrorInfo` doesn't say so.
struct IFileSystemItemExt : ::IUnknown
{
    /// Sets the time of the last change on the disk. This item goes on telling the old one.
    /// @param fileTime  In 100-nanosecond intervals since 1 January 1601 UTC; 0 changes nothing.
    /// @return S_OK; the status of the platform's call.
    virtual HRESULT STDMETHODCALLTYPE SetModifiedTime(std::uint64_t fileTime) = 0;

protected:
    ~IFileSystemItemExt() = default;
};

/// The place of a local file's icon in the system's image list. No object answers to this
/// interface at present; it keeps its identifier.
struct IFileSystemItemIcon : ::IUnknown
{
    /// @param      reserved   Ignored.
    /// @param[out] iconIndex  The position in the list.
    /// @param[out] imageList  The system's small image list, which is not the caller's to free.
    /// @return S_OK; ERROR_FILE_NOT_FOUND (0x80070002) if there is no icon.
    virtual HRESULT STDMETHODCALLTYPE GetIcon(std::uint32_t reserved, std::int32_t* iconIndex,
                                              void** imageList) = 0;

protected:
    ~IFileSystemItemIcon() = default;
};

/// Items of every file system but the local one: two texts by which a host can tell whether two
/// items are revisions of the same thing. The revision's marker is looked for in the whole text,
/// so that the address of a Subversion or Perforce item with a user and without a revision ends in
/// front of the user's `@`.
struct IFileSystemItemComparableUrl : ::IUnknown
{
    /// The name without the part that tells the revision.
    /// @param[out] name  The caller's to free.
    /// @return S_OK; E_OUTOFMEMORY; E_INVALIDARG for an address that can't be read.
    virtual HRESULT STDMETHODCALLTYPE GetComparableName(BSTR* name) = 0;

    /// The full address without the part that tells the revision.
    /// @param[out] url  The caller's to free. With user and password, as held.
    /// @return S_OK; E_OUTOFMEMORY.
    virtual HRESULT STDMETHODCALLTYPE GetComparableUrl(BSTR* url) = 0;

protected:
    ~IFileSystemItemComparableUrl() = default;
};

/// What a file has beyond an item.
struct IFile : ::IUnknown
{
    /// The lower half of the size.
    /// @param[out] size  In bytes; 0 for what doesn't exist or can't be read.
    /// @return As IFileSystemItem::GetModifiedTime.
    virtual HRESULT STDMETHODCALLTYPE GetSizeLow(std::uint32_t* size) = 0;

    /// The upper half of the size.
    /// @param[out] size  In units of 4 GiB.
    /// @return As IFileSystemItem::GetModifiedTime.
    virtual HRESULT STDMETHODCALLTYPE GetSizeHigh(std::uint32_t* size) = 0;

    /// Opens the content. Each call opens it anew, which for the version-control systems is a run
    /// of the client that fetches all of it; it waits for as long as the server takes.
    ///
    /// A local file open for reading is shared with readers and writers, one open for writing with
    /// readers only; neither with whoever deletes it, on Windows. The version-control systems read
    /// existing files and nothing else. FTP reads existing files or writes, and then takes any
    /// disposition for CreateAlways.
    /// @param      access       `Access` bits; both for local files only.
    /// @param      disposition  One of `Disposition`.
    /// @param[out] stream       The caller's to release; null on failure.
    /// @return S_OK; E_INVALIDARG for a pair that the file system doesn't offer; the status of the
    ///         platform's call, of the server, or of the client's run: E_FAIL where the client
    ///         refused in words, which the text then holds. A null `stream` is E_POINTER: with a
    ///         text for local files, bare for Git and Mercurial; Subversion and Perforce fetch the
    ///         content for nothing then and answer S_OK.
    virtual HRESULT STDMETHODCALLTYPE Open(std::uint32_t access, std::uint32_t disposition,
                                           IFileStream** stream) = 0;

protected:
    ~IFile() = default;
};

/// A fixed snapshot of a folder.
struct IFolderContents : ::IUnknown
{
    /// How many entries there are.
    /// @param[out] count  Without "." and "..".
    /// @return S_OK.
    virtual HRESULT STDMETHODCALLTYPE GetCount(std::uint32_t* count) = 0;

    /// A new item for one entry, each time. It answers to `IFolder` or to `IFile`, by what the
    /// entry is, and its facts cost no further question.
    /// @param      index  From 0.
    /// @param[out] item   The caller's to release; null on failure.
    /// @return S_OK; E_INVALIDARG for an index out of range, with a text; E_OUTOFMEMORY.
    virtual HRESULT STDMETHODCALLTYPE GetItem(std::int32_t index, IFileSystemItem** item) = 0;

protected:
    ~IFolderContents() = default;
};

/// What a folder has beyond an item. Git and Mercurial have no folders.
struct IFolder : ::IUnknown
{
    /// Reads the folder now; each call reads it afresh. The order is the file system's.
    /// @param[out] contents  The caller's to release; null on failure.
    /// @return S_OK; E_POINTER, bare, for a null pointer; the status of the platform's call, of the
    ///         server, or of the client's run.
    virtual HRESULT STDMETHODCALLTYPE GetContents(IFolderContents** contents) = 0;

    /// Makes the folder. Local and FTP only.
    /// @param recursive  Makes its missing ancestors as well; an existing folder is no failure
    /// then,
    ///                   and for local folders a level that may not be made isn't either, as it
    ///                   might be there already.
    /// @return S_OK; ERROR_ALREADY_EXISTS (0x800700B7), also for a file in the way; the status of
    ///         the platform's call or of the server; E_NOTIMPL, bare, elsewhere.
    virtual HRESULT STDMETHODCALLTYPE Create(VARIANT_BOOL recursive) = 0;

protected:
    ~IFolder() = default;
};

} // namespace tarnwell

TARNWELL_INTERFACE_ID(IFileSystemItem, 674B8120)
TARNWELL_INTERFACE_ID(IFileSystemItemExt, 674B8121)
TARNWELL_INTERFACE_ID(IFileSystemItemIcon, 674B8122)
TARNWELL_INTERFACE_ID(IFileSystemItemComparableUrl, 674B8123)
TARNWELL_INTERFACE_ID(IFile, 674B8124)
TARNWELL_INTERFACE_ID(IFolder, 674B8125)
TARNWELL_INTERFACE_ID(IFolderContents, 674B8126)
