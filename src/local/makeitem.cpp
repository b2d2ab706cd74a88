#include "local/makeitem.h"

#include "frame/paths.h"
#include "local/file.h"
#include "local/folder.h"

namespace tarnwell
{

namespace
{

template <class Item>
HRESULT MakeItem(std::u16string_view parentOrPath, const ItemRecord& record,
                 const ComPtr<IHostWindow>& host, REFIID iid, void** out)
{
    const bool isNamed = !record.name.empty();
    const std::size_t leaf = FindLeafOffset(parentOrPath);
    const PathPrefix prefix =
        isNamed ? PrefixIn(parentOrPath)
                : std::make_shared<const std::u16string>(parentOrPath.substr(0, leaf));
    const std::u16string_view name = isNamed ? record.name : parentOrPath.substr(leaf);
    ComPtr<ComObject<Item>> item;
    const HRESULT status = MakeObject<Item>(item);
    if (FAILED(status))
        return status;
    name.copy(item->Fill(prefix, record.facts, host, name.size()), name.size());
    return item->QueryInterface(iid, out);
}

template <class Item>
HRESULT MakeItemOf(const PathPrefix& prefix, const ListedRecord& record,
                   const ComPtr<IHostWindow>& host, IFileSystemItem** out)
{
    ComPtr<ComObject<Item>> item;
    const HRESULT status = MakeObject<Item>(item);
    if (FAILED(status))
        return status;
    record.CopyName(item->Fill(prefix, record.facts, host, record.nameLength));
    *out = item.Detach();
    return S_OK;
}

} // namespace

PathPrefix PrefixIn(std::u16string_view folder)
{
    std::u16string prefix(folder);
    AppendSeparator(prefix);
    return std::make_shared<const std::u16string>(std::move(prefix));
}

HRESULT MakeItemIn(const PathPrefix& prefix, const ListedRecord& record,
                   const ComPtr<IHostWindow>& host, IFileSystemItem** out)
{
    return IsFolder(record.facts) ? MakeItemOf<CWin32FolderObject>(prefix, record, host, out)
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
