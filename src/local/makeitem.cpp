#include "local/makeitem.h"

#include "frame/paths.h"
#include "local/file.h"
#include "local/folder.h"

namespace tarnwell
{

namespace
{

void SetPath(LocalFacts& facts, std::u16string_view parentOrPath, std::u16string_view name)
{
    facts.path.reserve(parentOrPath.size() + 1 + name.size());
    facts.path = parentOrPath;
    if (name.empty())
    {
        facts.nameOffset = static_cast<std::uint32_t>(FindLeafOffset(facts.path));
        return;
    }
    AppendSeparator(facts.path);
    facts.nameOffset = static_cast<std::uint32_t>(facts.path.size());
    facts.path += name;
}

LocalFacts FactsOf(std::u16string_view parentOrPath, const ItemRecord& record,
                   const ComPtr<IHostWindow>& host)
{
    LocalFacts facts;
    SetPath(facts, parentOrPath, record.name);
    facts.attributes = record.attributes;
    facts.sizeLow = record.sizeLow;
    facts.sizeHigh = record.sizeHigh;
    facts.modifiedTime = TimeOf(record.written);
    facts.host = host;
    return facts;
}

template <class Item>
HRESULT MakeItem(std::u16string_view parentOrPath, const ItemRecord& record,
                 const ComPtr<IHostWindow>& host, REFIID iid, void** out)
{
    ComPtr<ComObject<Item>> item;
    const HRESULT status = MakeObject<Item>(item);
    if (FAILED(status))
        return status;
    item->Fill(FactsOf(parentOrPath, record, host));
    return item->QueryInterface(iid, out);
}

} // namespace

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
