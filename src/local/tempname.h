// Names for temporary files.
#pragma once

#include "platform/win32.h"

#include <string>

namespace tarnwell
{

// Makes an empty file with a new name, `made`, in the folder of `beside`. A failure has no text.
HRESULT CreateFileBeside(const std::u16string& beside, std::u16string& made);

} // namespace tarnwell
