// Removing an entry of a folder, with all that is below it.
#pragma once

#include "platform/win32.h"

#include <string>

namespace tarnwell::posix
{

// ERROR_SUCCESS or an error code. A link is removed and never followed, nor is one followed that
// takes the place of a folder meanwhile. A folder that isn't empty goes only if `recurse` is set.
// What comes first in an incomplete removal is gone.
DWORD DeleteTree(const std::string& path, bool recurse);

} // namespace tarnwell::posix
