// The contents of a folder of a URI-addressed file system: the listing, and items made from it on
// demand.
#pragma once

#include "addressed/fsitem.h"
#include "addressed/interfaceimpl.h"
#include "frame/boundary.h"
#include "frame/comobject.h"
#include "frame/hostuser.h"

#include <tarnwell/items.h>

namespace tarnwell
{

// `File` and `Folder` are the backend's item classes, `classId` the class that a failure names.
template <class File, class Folder, const GUID& classId>
class FolderContentsObject : public IFolderContents,
                             public ErrorInfoFor<IFolderContents>,
                             public HostUIUser
{
public:
    using Interfaces = InterfaceList<IFolderContents, ::ISupportErrorInfo>;

    void Initialize(::IUnknown* host, FSItems items)
    {
        SetHostObject(host);
        items_ = std::move(items);
    }

    HRESULT STDMETHODCALLTYPE GetCount(std::uint32_t* count) final
    {
        return AtBoundary(reporter, NullPointer::Bare, count, [&] {
            *count = static_cast<std::uint32_t>(items_.size());
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE GetItem(std::int32_t index, IFileSystemItem** item) final
    {
        return AtBoundary(reporter, NullPointer::Bare, item, [&] {
            const FSItem& entry = EntryAt(static_cast<std::uint32_t>(index));
            *item = entry.isDirectory ? Make<Folder>(entry) : Make<File>(entry);
            return S_OK;
        });
    }

protected:
    ~FolderContentsObject() = default;

private:
    static constexpr Reporter reporter{classId, IID_IFolderContents};

    // A negative index is past the end as well. There is no message for it: what is published is
    // the position in the source alone.
    const FSItem& EntryAt(std::uint32_t index) const
    {
        if (index >= items_.size())
            throw ComException(E_INVALIDARG, {}, At(u"interfaceimpl"));
        return *items_[index];
    }

    template <class Item> IFileSystemItem* Make(const FSItem& entry) const
    {
        ComPtr<ComObject<Item>> item;
        ThrowIfNotMade(MakeObject<Item>(item));
        item->InitializeFromItem(HostObject(), entry);
        return item.Detach();
    }

    FSItems items_;
};

// A new contents object for `items`.
template <class Contents>
ComPtr<IFolderContents> MakeFolderContents(::IUnknown* host, FSItems items)
{
    ComPtr<ComObject<Contents>> contents;
    ThrowIfNotMade(MakeObject<Contents>(contents));
    contents->Initialize(host, std::move(items));
    return ComPtr<IFolderContents>::Adopt(contents.Detach());
}

} // namespace tarnwell
