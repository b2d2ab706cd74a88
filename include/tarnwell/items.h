// Items: files, folders, and the contents of folders.
//
// An item is a snapshot of one address. Local items hold the facts found when they were made;
// items of the other file systems ask for them on the first call that needs one, and keep the
// answer. Nothing is refreshed. An item may stand for something that doesn't exist yet.
#pragma once

#include <tarnwell/streams.h>

namespace tarnwell
{

// Answered by every file and every folder.
struct IFileSystemItem : ::IUnknown
{
    // The time of the last change, 0 if it isn't known.
    virtual HRESULT STDMETHODCALLTYPE GetModifiedTime(std::uint64_t* fileTime) = 0;

    // FILE_ATTRIBUTE_ bits as Windows defines them. File systems other than the local one give
    // exactly 16 for a folder, 128 for a writable file and 129 for a read-only one.
    virtual HRESULT STDMETHODCALLTYPE GetAttributes(std::uint32_t* attributes) = 0;

    // Changes the attributes on the disk and in this item. Local only; E_NOTIMPL elsewhere. On
    // Linux only the read-only bit (1) reaches the disk, as write permission.
    virtual HRESULT STDMETHODCALLTYPE SetAttributes(std::uint32_t attributes) = 0;

    // The last component. Empty for the root of a file system.
    virtual HRESULT STDMETHODCALLTYPE GetName(BSTR* name) = 0;

    // The address of the containing folder.
    virtual HRESULT STDMETHODCALLTYPE GetParentPath(BSTR* path) = 0;

    // The full address, as held; of addresses with a user and a password, with both.
    virtual HRESULT STDMETHODCALLTYPE GetPath(BSTR* path) = 0;

    // Deletes the item for good. Local and FTP only; E_NOTIMPL elsewhere. `noConfirm` leaves
    // out the question to the user. With `noConfirm` set and `recursive` clear, a local item
    // must be a file. A "no" to the question may count as success: look again if it matters.
    virtual HRESULT STDMETHODCALLTYPE Delete(VARIANT_BOOL noConfirm, VARIANT_BOOL recursive) = 0;

protected:
    ~IFileSystemItem() = default;
};

// Local files only. Its failures leave a text, although `ISupportErrorInfo` doesn't say so.
struct IFileSystemItemExt : ::IUnknown
{
    // Sets the time of the last change on the disk. This item goes on telling the old one.
    virtual HRESULT STDMETHODCALLTYPE SetModifiedTime(std::uint64_t fileTime) = 0;

protected:
    ~IFileSystemItemExt() = default;
};

// The place of a local file's icon in the system's image list. No object answers to this
// interface at present; it keeps its identifier.
struct IFileSystemItemIcon : ::IUnknown
{
    // `reserved` is ignored. `*imageList` receives the system's small image list, which is not
    // the caller's to free, and `*iconIndex` the position in it.
    virtual HRESULT STDMETHODCALLTYPE GetIcon(std::uint32_t reserved, std::int32_t* iconIndex,
                                              void** imageList) = 0;

protected:
    ~IFileSystemItemIcon() = default;
};

// Items of every file system but the local one: two texts by which a host can tell whether two
// items are revisions of the same thing.
struct IFileSystemItemComparableUrl : ::IUnknown
{
    // The name without the part that tells the revision.
    virtual HRESULT STDMETHODCALLTYPE GetComparableName(BSTR* name) = 0;

    // The full address without the part that tells the revision.
    virtual HRESULT STDMETHODCALLTYPE GetComparableUrl(BSTR* url) = 0;

protected:
    ~IFileSystemItemComparableUrl() = default;
};

struct IFile : ::IUnknown
{
    // The two halves of the size in bytes. 0 for what doesn't exist or can't be read.
    virtual HRESULT STDMETHODCALLTYPE GetSizeLow(std::uint32_t* size) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetSizeHigh(std::uint32_t* size) = 0;

    // Opens the content. `access` is 0x80000000 for reading, 0x40000000 for writing, or both
    // (local only); `disposition` is 1 make a new file, 2 make or empty, 3 open an existing
    // file, 4 open or make, 5 open and empty. The version-control systems only read existing
    // files. Streams of local files are shared with other readers.
    virtual HRESULT STDMETHODCALLTYPE Open(std::uint32_t access, std::uint32_t disposition,
                                           IFileStream** stream) = 0;

protected:
    ~IFile() = default;
};

// A fixed snapshot of a folder.
struct IFolderContents : ::IUnknown
{
    virtual HRESULT STDMETHODCALLTYPE GetCount(std::uint32_t* count) = 0;

    // A new item for entry `index`, counted from 0. It answers to `IFolder` or to `IFile`, by
    // what the entry is, and its facts cost no further question. E_INVALIDARG for an index out
    // of range.
    virtual HRESULT STDMETHODCALLTYPE GetItem(std::int32_t index, IFileSystemItem** item) = 0;

protected:
    ~IFolderContents() = default;
};

struct IFolder : ::IUnknown
{
    // Reads the folder now; each call reads it afresh. The order is the file system's. A null
    // pointer is refused bare.
    virtual HRESULT STDMETHODCALLTYPE GetContents(IFolderContents** contents) = 0;

    // Makes the folder, with its missing ancestors if `recursive` is set (an existing folder is
    // no failure then). Local and FTP only; E_NOTIMPL elsewhere.
    virtual HRESULT STDMETHODCALLTYPE Create(VARIANT_BOOL recursive) = 0;

protected:
    ~IFolder() = default;
};

TARNWELL_INTERFACE_ID(IFileSystemItem, 0x674B8120);
TARNWELL_INTERFACE_ID(IFileSystemItemExt, 0x674B8121);
TARNWELL_INTERFACE_ID(IFileSystemItemIcon, 0x674B8122);
TARNWELL_INTERFACE_ID(IFileSystemItemComparableUrl, 0x674B8123);
TARNWELL_INTERFACE_ID(IFile, 0x674B8124);
TARNWELL_INTERFACE_ID(IFolder, 0x674B8125);
TARNWELL_INTERFACE_ID(IFolderContents, 0x674B8126);

} // namespace tarnwell
