// Completion of command lines by the shell.
#pragma once

#include <string>

namespace tarnwell::host
{

// For bash with its package bash-completion: commands, options, the schemes of addresses, and file
// names.
std::u16string BashCompletion();

} // namespace tarnwell::host
