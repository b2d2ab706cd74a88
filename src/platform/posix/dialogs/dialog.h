// Asking through the desktop's dialog program.
#pragma once

#include <optional>
#include <string>

namespace tarnwell::posix
{

// Nothing if there is no display or no such program.
std::optional<bool> AskByDialog(const std::string& question);

} // namespace tarnwell::posix
