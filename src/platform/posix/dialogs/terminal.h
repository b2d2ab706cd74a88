// Asking on the process's terminal.
#pragma once

#include <string>

namespace tarnwell::posix
{

// Whether the answer begins with "y". False where there is no terminal, or where it is not this
// process's turn to use it.
bool AskOnTerminal(const std::string& question);

} // namespace tarnwell::posix
