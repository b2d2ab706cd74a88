// The folders of the file systems of addresses.
#pragma once

#include "addressed/uriitem.h"
#include "frame/comobject.h"

namespace tarnwell
{

// A backend derives from it and supplies `MakeContents`, `ReadItemInfo` and, where it can,
// `Create`.
class FolderObject : public IFolder,
                     public ErrorInfoFor<IFileSystemItem, IFolder>,
                     public IUriFileSystemItemImpl
{
public:
    using Interfaces =
        InterfaceList<IFileSystemItem, IFileSystemItemComparableUrl, IFolder, ::ISupportErrorInfo>;

    HRESULT STDMETHODCALLTYPE GetContents(IFolderContents** contents) final;
    HRESULT STDMETHODCALLTYPE Create(VARIANT_BOOL recursive) override;

protected:
    FolderObject(const GUID& classId, const AddressKind& addresses)
        : IUriFileSystemItemImpl(classId, addresses, true)
    {
    }
    ~FolderObject() override = default;

    // Reads the folder now. Throws if that fails.
    virtual ComPtr<IFolderContents> MakeContents() = 0;
};

} // namespace tarnwell
