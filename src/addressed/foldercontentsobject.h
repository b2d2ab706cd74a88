// The contents of a folder of a file system of addresses: the listing, and items made from it on
// demand.
#pragma once

#include "addressed/fsitem.h"
#include "addressed/interfaceimpl.h"
#include "frame/comobject.h"
#include "frame/hostuser.h"

#include <tarnwell/items.h>

namespace tarnwell
{

// Makes the item of an entry, which belongs to `host`.
using ListedItemMaker = ComPtr<IFileSystemItem> (*)(::IUnknown* host, const FSItem& entry);

template <class Item> ComPtr<IFileSystemItem> MakeListedItem(::IUnknown* host, const FSItem& entry)
{
    auto item = NewObject<Item>();
    item->InitializeFromItem(host, entry);
    return ComPtr<IFileSystemItem>::Adopt(item.Detach());
}

// A backend derives from it and names its classes.
class FolderContentsObject : public IFolderContents,
                             public ErrorInfoFor<IFolderContents>,
                             public HostUIUser
{
public:
    using Interfaces = InterfaceList<IFolderContents, ::ISupportErrorInfo>;

    // Called once, before the object is handed out.
    void Initialize(::IUnknown* host, FSItems items);

    HRESULT STDMETHODCALLTYPE GetCount(std::uint32_t* count) final;
    HRESULT STDMETHODCALLTYPE GetItem(std::int32_t index, IFileSystemItem** item) final;

protected:
    // `classId` is the class that a failure names.
    FolderContentsObject(const GUID& classId, ListedItemMaker makeFile, ListedItemMaker makeFolder)
        : classId_(classId), makeFile_(makeFile), makeFolder_(makeFolder)
    {
    }
    ~FolderContentsObject() = default;

private:
    const FSItem& EntryAt(std::uint32_t index) const;

    const GUID& classId_;
    ListedItemMaker makeFile_;
    ListedItemMaker makeFolder_;
    FSItems items_;
};

// A new contents object of the backend's class `Contents` for `items`.
template <class Contents>
ComPtr<IFolderContents> MakeFolderContents(::IUnknown* host, FSItems items)
{
    auto contents = NewObject<Contents>();
    contents->Initialize(host, std::move(items));
    return ComPtr<IFolderContents>::Adopt(contents.Detach());
}

} // namespace tarnwell
