#include "local/makeitem.h"

#include "frame/paths.h"
#include "local/file.h"
#include "local/folder.h"

namespace tarnwell
{

namespace
{

// A new item, not yet handed out.
template <class Item>
HRESULT MakeFilled(const PathPrefix& prefix, std::u16string_view name, const ItemRecord& record,
                   const ComPtr<IHostWindow>& host, ComPtr<ComObject<Item>>& item)
{
    const HRESULT status = MakeObject<Item>(item);
    if (SUCCEEDED(status))
        item->Fill(prefix, name, record, host);
    return status;
}

template <class Item>
HRESULT MakeItem(std::u16string_view parentOrPath, const ItemRecord& record,
                 const ComPtr<IHostWindow>& host, REFIID iid, void** out)
{
    const bool isNamed = !record.name.empty();
    const std::size_t leaf = FindLeafOffset(parentOrPath);
    const PathPrefix prefix =
        isNamed ? PrefixIn(parentOrPath)
                : std::make_shared<const std::u16string>(parentOrPath.substr(0, leaf));
    ComPtr<ComObject<Item>> item;
    const HRESULT status =
        MakeFilled(prefix, isNamed ? record.name : parentOrPath.substr(leaf), record, host, item);
    return FAILED(status) ? status : item->QueryInterface(iid, out);
}

template <class Item>
HRESULT MakeItemOf(const PathPrefix& prefix, const ItemRecord& record,
                   const ComPtr<IHostWindow>& host, IFileSystemItem** out)
{
    ComPtr<ComObject<Item>> item;
    const HRESULT status = MakeFilled(prefix, record.name, record, host, item);
    *out = item.Detach();
    return status;
}

} // namespace

PathPrefix PrefixIn(std::u16string_view folder)
{
    std::u16string prefix(folder);
    AppendSeparator(prefix);
    return std::make_shared<const std::u16string>(std::move(prefix));
}

HRESULT MakeItemIn(const PathPrefix& prefix, const ItemRecord& record,
                   const ComPtr<IHostWindow>& host, IFileSystemItem** out)
{
    return IsFolder(record) ? MakeItemOf<CWin32FolderObject>(prefix, record, host, out)
                            : MakeItemOf<CWin32FileObject>(prefix, record, host, out);
}

HRESULT MakeFileItem(std::u16string_view parentOrPath, const ItemRecord& record,
                     const ComPtr<IHostWindow>& host, REFIID iid, void** out)
{
    return MakeItem<CWin32FileObject>(parentOrPath, record, host, iid, out);
}

HRESULT MakeFolderItem(std::u16string_view parentOrPath, const ItemRecord& record,
                       const ComPtr<IHostWindow>& host, REFIID iid, void** out)
{
    return MakeItem<CWin32FolderObject>(parentOrPath, record, host, iid, out);
}

} // namespace tarnwell
