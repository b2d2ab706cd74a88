// The desktop's trash, from which its user gets things back.
#pragma once

#include "platform/win32.h"

#include <string>
#include <vector>

namespace tarnwell::posix
{

// ERROR_SUCCESS or an error code. Moves the entries to the trash that belongs to their file system:
// links as links, folders with all that is in them. What can't go there stays where it is;
// ERROR_NOT_SUPPORTED means that there is nothing here that knows of a trash.
DWORD MoveToTrash(const std::vector<std::string>& paths);

// ERROR_SUCCESS if the entry isn't a folder, or is an empty one; ERROR_DIR_NOT_EMPTY if there is
// something in it; else why that can't be known. A link isn't a folder.
DWORD CheckEmptyFolder(const std::string& path);

} // namespace tarnwell::posix
