// The folder of a URI-addressed file system. A backend derives from it and supplies
// `MakeContents`, `ReadItemInfo`, where it can `Create`, and, where addresses carry revisions,
// `FindRevisionMarker`.
#pragma once

#include "addressed/uriitem.h"
#include "frame/comobject.h"

namespace tarnwell
{

// `Address` is the backend's Uri class, `classId` the class that a failure names.
template <class Address, const GUID& classId>
class FolderObject : public IFolder,
                     public ErrorInfoFor<IFileSystemItem, IFolder>,
                     public IUriFileSystemItemImpl<classId>
{
public:
    using Interfaces =
        InterfaceList<IFileSystemItem, IFileSystemItemComparableUrl, IFolder, ::ISupportErrorInfo>;

    HRESULT STDMETHODCALLTYPE GetContents(IFolderContents** contents) final
    {
        return AtBoundary(folderReporter, NullPointer::Bare, contents, [&] {
            *contents = MakeContents().Detach();
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE Create(VARIANT_BOOL) override
    {
        return E_NOTIMPL;
    }

    void Initialize(::IUnknown* host, const std::u16string& path, bool mustExist)
    {
        this->InitializeItem(host, std::make_shared<Address>(path), mustExist, true);
    }
    void InitializeFromItem(::IUnknown* host, const FSItem& item)
    {
        this->InitializeItem(host, std::make_shared<Address>(item.text), item);
    }

protected:
    ~FolderObject() override = default;

    // Reads the folder now.
    virtual ComPtr<IFolderContents> MakeContents() = 0;

    static constexpr Reporter folderReporter{classId, IID_IFolder};
};

} // namespace tarnwell
