// Item objects out of records.
#pragma once

#include "local/findrecord.h"

#include <tarnwell/host.h>
#include <tarnwell/pointers.h>

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

} // namespace tarnwell
