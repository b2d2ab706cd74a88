#include "addressed/foldercontentsobject.h"

#include "frame/boundary.h"

namespace tarnwell
{

void FolderContentsObject::Initialize(::IUnknown* host, FSItems items)
{
    SetHostObject(host);
    items_ = std::move(items);
}

HRESULT FolderContentsObject::GetCount(std::uint32_t* count)
{
    return AtBoundary({classId_, IID_IFolderContents}, NullPointer::Bare, count, [&] {
        *count = static_cast<std::uint32_t>(items_.size());
        return S_OK;
    });
}

HRESULT FolderContentsObject::GetItem(std::int32_t index, IFileSystemItem** item)
{
    return AtBoundary({classId_, IID_IFolderContents}, NullPointer::Bare, item, [&] {
        const FSItem& entry = EntryAt(static_cast<std::uint32_t>(index));
        *item = (entry.isDirectory ? makeFolder_ : makeFile_)(HostObject(), entry).Detach();
        return S_OK;
    });
}

// A negative index is past the end, too. No message exists for it: only the position in the source
// is published.
const FSItem& FolderContentsObject::EntryAt(std::uint32_t index) const
{
    if (index >= items_.size())
        throw ComException(E_INVALIDARG, {}, At(u"interfaceimpl"));
    return *items_[index];
}

} // namespace tarnwell
