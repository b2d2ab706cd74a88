// A URI-addressed file system. A backend derives from it, adds `IFileSystemRevisions` where it has
// them, and supplies the two operations that make items.
#pragma once

#include "addressed/interfaceimpl.h"
#include "frame/boundary.h"
#include "frame/comobject.h"
#include "frame/hostuser.h"
#include "frame/text.h"

#include <tarnwell/filesystem.h>

namespace tarnwell
{

// The address of `relative` in `base`, put together as text: one "/" at its beginning is dropped,
// and nothing is parsed.
std::u16string CombineAddresses(std::u16string base, std::u16string_view relative);

template <const GUID& classId>
class FileSystemObject : public IFileSystemInit,
                         public IFileSystem,
                         public ErrorInfoFor<IFileSystem, IFileSystemInit, IFileSystemRevisions>,
                         public HostUIUser
{
public:
    HRESULT STDMETHODCALLTYPE SetHost(::IUnknown* host) final
    {
        SetHostObject(host);
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE GetFolder(const OLECHAR* path, VARIANT_BOOL mustExist,
                                        IFolder** folder) final
    {
        return AtBoundary(reporter, NullPointer::Bare, folder, [&] {
            *folder = CreateFolderObject(FromHost(path), IsTrue(mustExist)).Detach();
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE GetFile(const OLECHAR* path, VARIANT_BOOL mustExist,
                                      IFile** file) final
    {
        return AtBoundary(reporter, NullPointer::Bare, file, [&] {
            *file = CreateFileObject(FromHost(path), IsTrue(mustExist)).Detach();
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE CopyItem(const OLECHAR*, const OLECHAR*, ICopyProgress*) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateTempFile(const OLECHAR*, BSTR* tempPath) override
    {
        if (tempPath != nullptr)
            *tempPath = nullptr;
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE DeleteItems(IItemList*, VARIANT_BOOL, VARIANT_BOOL) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetOperationMask(std::uint32_t kind, ::IUnknown* other,
                                               std::uint32_t* mask) final
    {
        return AtBoundary(reporter, NullPointer::Bare, mask, [&] {
            *mask = everyOperation;
            const auto held = ComPtr<::IUnknown>::Share(other);
            *mask = GetOperationMaskFor(kind, other);
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE CombinePath(const OLECHAR* base, const OLECHAR* relative,
                                          BSTR* result) final
    {
        return AtBoundary(reporter, NullPointer::Bare, result, [&] {
            return ToHost(CombineAddresses(FromHost(base), FromHost(relative)), result);
        });
    }

protected:
    ~FileSystemObject() = default;

    static constexpr std::uint32_t everyOperation = 65535;

    // A new item for an address as the host gave it.
    virtual ComPtr<IFile> CreateFileObject(const std::u16string& path, bool mustExist) = 0;
    virtual ComPtr<IFolder> CreateFolderObject(const std::u16string& path, bool mustExist) = 0;
    // The operations that are offered for items of a kind, as hosts understand the bits.
    virtual std::uint32_t GetOperationMaskFor(std::uint32_t kind, ::IUnknown*) const
    {
        return kind <= 1 ? 5 : everyOperation;
    }

    static constexpr Reporter reporter{classId, IID_IFileSystem};

    // A new item of the backend's class `Item` as its interface `I`.
    template <class Item, class I>
    ComPtr<I> MakeItem(const std::u16string& path, bool mustExist) const
    {
        ComPtr<ComObject<Item>> item;
        ThrowIfNotMade(MakeObject<Item>(item));
        item->Initialize(HostObject(), path, mustExist);
        return ComPtr<I>::Adopt(item.Detach());
    }
};

} // namespace tarnwell
