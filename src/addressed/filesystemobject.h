// The file systems of addresses.
#pragma once

#include "addressed/interfaceimpl.h"
#include "frame/comobject.h"
#include "frame/hostuser.h"
#include "frame/revisions.h"

#include <tarnwell/filesystem.h>
#include <tarnwell/history.h>
#include <tarnwell/trees.h>

#include <string>
#include <string_view>

namespace tarnwell
{

// The address of `relative` in `base`, put together as text: one "/" at its beginning is dropped,
// and nothing is parsed.
std::u16string CombineAddresses(std::u16string base, std::u16string_view relative);

// A backend derives from it and supplies the two operations that make items. Deliberate: every file
// system of addresses claims error information for the interfaces of revisions, even one that has
// no revisions and doesn't answer to these interfaces.
class FileSystemObject : public IFileSystemInit,
                         public IFileSystem,
                         public ErrorInfoFor<IFileSystem, IFileSystemInit, IFileSystemRevisions,
                                             IFileSystemHistory, IFileSystemTrees>,
                         public HostUIUser
{
public:
    using Interfaces = InterfaceList<IFileSystemInit, IFileSystem, ::ISupportErrorInfo>;

    HRESULT STDMETHODCALLTYPE SetHost(::IUnknown* host) final;
    HRESULT STDMETHODCALLTYPE GetFolder(const OLECHAR* path, VARIANT_BOOL mustExist,
                                        IFolder** folder) final;
    HRESULT STDMETHODCALLTYPE GetFile(const OLECHAR* path, VARIANT_BOOL mustExist,
                                      IFile** file) final;
    HRESULT STDMETHODCALLTYPE CopyItem(const OLECHAR* source, const OLECHAR* target,
                                       ICopyProgress* progress) override;
    HRESULT STDMETHODCALLTYPE CreateTempFile(const OLECHAR* path, BSTR* tempPath) override;
    HRESULT STDMETHODCALLTYPE DeleteItems(IItemList* items, VARIANT_BOOL noConfirm,
                                          VARIANT_BOOL recursive) override;
    HRESULT STDMETHODCALLTYPE GetOperationMask(std::uint32_t kind, ::IUnknown* other,
                                               std::uint32_t* mask) final;
    HRESULT STDMETHODCALLTYPE CombinePath(const OLECHAR* base, const OLECHAR* relative,
                                          BSTR* result) final;

protected:
    // `classId` is the class that a failure names.
    explicit FileSystemObject(const GUID& classId) : classId_(classId) {}
    ~FileSystemObject() = default;

    static constexpr std::uint32_t everyOperation = 65535;

    // A new item for an address as the host gave it. Both throw if there can't be one.
    virtual ComPtr<IFile> CreateFileObject(const std::u16string& path, bool mustExist) = 0;
    virtual ComPtr<IFolder> CreateFolderObject(const std::u16string& path, bool mustExist) = 0;
    // The operations that are offered for items of a kind, as hosts understand the bits.
    virtual std::uint32_t GetOperationMaskFor(std::uint32_t kind, ::IUnknown* other) const;

    const GUID& ClassId() const
    {
        return classId_;
    }

    // A new item of the backend's class `Item` as its interface `I`.
    template <class Item, class I>
    ComPtr<I> MakeItem(const std::u16string& path, bool mustExist) const
    {
        auto item = NewObject<Item>();
        item->Initialize(HostObject(), path, mustExist);
        return ComPtr<I>::Adopt(item.Detach());
    }

private:
    const GUID& classId_;
};

// One that has revisions. Its revision calls hide every failure: a missing client, an item without
// history and a broken repository all read as "no revisions".
class RevisionsFileSystemObject : public FileSystemObject, public IFileSystemRevisions
{
public:
    using Interfaces =
        InterfaceList<IFileSystemRevisions, IFileSystemInit, IFileSystem, ::ISupportErrorInfo>;

    HRESULT STDMETHODCALLTYPE HasRevisions(const OLECHAR* path, std::uint32_t reserved,
                                           VARIANT_BOOL* has) final;
    HRESULT STDMETHODCALLTYPE GetRevisions(const OLECHAR* path, std::uint32_t reserved,
                                           IRevisions** revisions) final;

protected:
    using FileSystemObject::FileSystemObject;
    ~RevisionsFileSystemObject() = default;

    // The history of the item that the host names, the latest first.
    virtual RevisionList ReadRevisions(const std::u16string& path) = 0;

private:
    RevisionList RevisionsOrNone(const OLECHAR* path) noexcept;
};

} // namespace tarnwell
