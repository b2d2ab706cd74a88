// A list of addresses, as IFileSystem::DeleteItems takes it.
#pragma once

#include <tarnwell/host.h>
#include <tarnwell/pointers.h>

#include <string>
#include <vector>

namespace tarnwell::host
{

ComPtr<IItemList> MakeItemList(const std::vector<std::u16string>& addresses);

} // namespace tarnwell::host
