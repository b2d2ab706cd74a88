// The text of the settings file; it reads nothing itself.
#pragma once

#include "platform/win32.h"

#include <string>
#include <string_view>
#include <vector>

namespace tarnwell::posix
{

struct Setting
{
    std::u16string name;
    DWORD type = REG_NONE;
    // As the registry keeps it: text in UTF-16 with its terminator, a number in 4 bytes.
    std::vector<BYTE> data;
};

// `text` is UTF-8; bytes that are none come out as in names. A name that stands twice has two
// records.
std::vector<Setting> ParseSettings(std::string_view text);

} // namespace tarnwell::posix
