// The environment between bytes and the platform's block of texts.
#pragma once

#include "platform/win32.h"

#include <optional>
#include <string>
#include <vector>

namespace tarnwell::posix
{

// The texts of a block, each up to its terminator, ended by an empty one. Nothing if one of them
// stands for no bytes.
std::optional<std::vector<std::string>> EncodeEnvironment(LPCWSTR block);

} // namespace tarnwell::posix
