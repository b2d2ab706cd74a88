// From a path to an item: one look at the disk.
#pragma once

#include "platform/win32.h"

#include <tarnwell/host.h>
#include <tarnwell/items.h>
#include <tarnwell/pointers.h>

#include <string>

namespace tarnwell
{

// Each makes an item for `path`, or fails without a text of its own: with the platform's status
// if the item must exist and doesn't, with 0x80070002 if it is of the other kind.
HRESULT OpenFolderItem(const std::u16string& path, bool mustExist, const ComPtr<IHostWindow>& host,
                       IFolder** out);
HRESULT OpenFileItem(const std::u16string& path, bool mustExist, const ComPtr<IHostWindow>& host,
                     IFile** out);

} // namespace tarnwell
