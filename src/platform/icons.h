// The desktop's icons.
#pragma once

#include "platform/win32.h"

#include <cstdint>
#include <string>

extern "C"
{
    // The small icon of what is at `path`: its number in a list of images that is the system's own.
    // False where there is none, as on a platform without such lists.
    BOOL FindIcon(const std::u16string& path, std::int32_t& index, void*& images);
}
