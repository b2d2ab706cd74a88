// Copying a file by its path.
#pragma once

#include "platform/win32.h"

#include <tarnwell/filesystem.h>

#include <string>

namespace tarnwell
{

// Copies over `destination`: by the platform where it can, else, where an end is a named data
// stream, through `system`, which finds both ends. `flags` are the platform's, and reach its
// extended copy only. A null `progress` isn't asked. A failure has no text of this operation.
HRESULT CopyByPath(IFileSystem& system, const std::u16string& source,
                   const std::u16string& destination, DWORD flags, ICopyProgress* progress);

} // namespace tarnwell
