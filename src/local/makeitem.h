// Item objects out of records.
#pragma once

#include "local/item.h"
#include "local/recordlist.h"

#include <string_view>

namespace tarnwell
{

// A new item, asked for interface `iid`. A record with a name makes the item of that name in the
// folder `parentOrPath`; one without makes the item at `parentOrPath` itself. So an item has the
// name by which the caller or the listing calls it, whatever case the disk has it in.
HRESULT MakeFileItem(std::u16string_view parentOrPath, const ItemRecord& record,
                     const ComPtr<IHostWindow>& host, REFIID iid, void** out);
HRESULT MakeFolderItem(std::u16string_view parentOrPath, const ItemRecord& record,
                       const ComPtr<IHostWindow>& host, REFIID iid, void** out);

// What the paths of the items of `folder` begin with.
PathPrefix PrefixIn(std::u16string_view folder);

// A new item out of a listing, a file or a folder by its record, which has a name.
HRESULT MakeItemIn(const PathPrefix& prefix, const ListedRecord& record,
                   const ComPtr<IHostWindow>& host, IFileSystemItem** out);

} // namespace tarnwell
