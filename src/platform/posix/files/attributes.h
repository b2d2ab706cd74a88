// The platform's file attributes, from what the system keeps.
#pragma once

#include "platform/win32.h"

#include <string_view>
#include <sys/stat.h>

namespace tarnwell::posix
{

// Permission to write, for whomever: a file without any is read-only.
inline constexpr mode_t anyWrite = S_IWUSR | S_IWGRP | S_IWOTH;

// `mode` is that of the link's target where the entry is a link with one.
DWORD AttributesOf(mode_t mode, std::string_view leaf, bool isLink);

} // namespace tarnwell::posix
