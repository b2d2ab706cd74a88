// Names for temporary files.
#pragma once

#include "platform/win32.h"

#include <string>

namespace tarnwell
{

// Makes an empty file with a new name, `made`, in the folder of `path`. A failure has no text.
HRESULT CreateFileBeside(const std::u16string& path, std::u16string& made);

} // namespace tarnwell
