// A client's output, made of the fuzzer's bytes.
#pragma once

#include "platform/win32.h"

#include <string_view>

namespace tarnwell::fuzz
{

// A file that holds `bytes`, to be read from its start. It is the same file each time, and stays
// open.
HANDLE OutputOf(std::string_view bytes);

} // namespace tarnwell::fuzz
