// File systems: where a host starts.
//
// All six classes answer to `IFileSystemInit` and `IFileSystem`; all but FTP to
// `IFileSystemRevisions`; the local one also to `IFileSystemCopyEx`. Addresses are paths for the
// local file system and URIs for the others. Methods that a file system doesn't offer return
// E_NOTIMPL, bare.
#pragma once

#include <tarnwell/host.h>
#include <tarnwell/items.h>
#include <tarnwell/revisions.h>

namespace tarnwell
{

struct IFileSystemInit : ::IUnknown
{
    // Gives the file system the host object, replacing an earlier one. Call it first. `host` may
    // be null; then there are no settings, no credentials and no owner window. Items that exist
    // already keep the host object that they were made with. Always S_OK.
    virtual HRESULT STDMETHODCALLTYPE SetHost(::IUnknown* host) = 0;

protected:
    ~IFileSystemInit() = default;
};

struct IFileSystem : ::IUnknown
{
    // A folder object for `path`. With `mustExist` set, a missing item or a file is a failure;
    // with it clear the object is made all the same (but the local file system refuses a file),
    // and `IFolder::Create` can make the folder. Git and Mercurial have no folders and fail.
    virtual HRESULT STDMETHODCALLTYPE GetFolder(const OLECHAR* path, VARIANT_BOOL mustExist,
                                                IFolder** folder) = 0;

    // A file object for `path`; `mustExist` as above, with the parts exchanged.
    virtual HRESULT STDMETHODCALLTYPE GetFile(const OLECHAR* path, VARIANT_BOOL mustExist,
                                              IFile** file) = 0;

    // Copies one file over `destination`. Local and FTP only. `progress` must not be null for
    // local copies.
    virtual HRESULT STDMETHODCALLTYPE CopyItem(const OLECHAR* source, const OLECHAR* destination,
                                               ICopyProgress* progress) = 0;

    // Makes an empty file with a new name in the folder of `path` and gives its full name. The
    // file is the caller's to remove. Local only.
    virtual HRESULT STDMETHODCALLTYPE CreateTempFile(const OLECHAR* path, BSTR* tempPath) = 0;

    // Deletes all listed items. Local items go to the recycle bin or trash, and stay where there
    // is none on Linux; FTP items go for good.
    // `noConfirm` leaves out the question to the user; a "no" to it counts as success. Local and
    // FTP only.
    virtual HRESULT STDMETHODCALLTYPE DeleteItems(IItemList* items, VARIANT_BOOL noConfirm,
                                                  VARIANT_BOOL recursive) = 0;

    // The operations that the file system offers, as bits that the host defines. `kind` 0 and 1
    // give 7 (local) or 5 (others), any other 65535. `other` may be null and isn't used.
    virtual HRESULT STDMETHODCALLTYPE GetOperationMask(std::uint32_t kind, ::IUnknown* other,
                                                       std::uint32_t* mask) = 0;

    // The address of the item `relative` inside the folder `base`, put together as text: nothing
    // is looked up, and `relative` isn't inspected but for one leading "/", which the file
    // systems other than the local one drop.
    virtual HRESULT STDMETHODCALLTYPE CombinePath(const OLECHAR* base, const OLECHAR* relative,
                                                  BSTR* result) = 0;

protected:
    ~IFileSystem() = default;
};

struct IFileSystemCopyEx : ::IUnknown
{
    // As `IFileSystem::CopyItem`, with the copy flags of `CopyFileExW` (COPY_FILE_ bits).
    virtual HRESULT STDMETHODCALLTYPE CopyItemEx(const OLECHAR* source, const OLECHAR* destination,
                                                 std::uint32_t flags, ICopyProgress* progress) = 0;

protected:
    ~IFileSystemCopyEx() = default;
};

struct IFileSystemRevisions : ::IUnknown
{
    // Whether at least one other revision of the item is known. `reserved` is ignored. Failures
    // on the way are hidden here: false and S_OK.
    virtual HRESULT STDMETHODCALLTYPE HasRevisions(const OLECHAR* path, std::uint32_t reserved,
                                                   VARIANT_BOOL* has) = 0;

    // The item's revisions, the latest first. `reserved` is ignored. Failures on the way are
    // hidden: an empty list and S_OK. Of the local file system these are the versions that the
    // snapshots of the item's volume hold, for absolute paths; on Linux there are none.
    virtual HRESULT STDMETHODCALLTYPE GetRevisions(const OLECHAR* path, std::uint32_t reserved,
                                                   IRevisions** revisions) = 0;

protected:
    ~IFileSystemRevisions() = default;
};

TARNWELL_INTERFACE_ID(IFileSystemInit, 0x674B8100);
TARNWELL_INTERFACE_ID(IFileSystem, 0x674B8101);
TARNWELL_INTERFACE_ID(IFileSystemCopyEx, 0x674B8102);
TARNWELL_INTERFACE_ID(IFileSystemRevisions, 0x674B8103);

} // namespace tarnwell
