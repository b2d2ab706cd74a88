// Help, and the checks that need to know the commands.
#pragma once

#include "arguments.h"
#include "commands.h"

namespace tarnwell::host
{

std::u16string UsageText();

// The command that is meant. Throws UsageError if there is none such, or if it doesn't go with
// the operands and options.
const Command& CommandOf(const CommandLine& line);

} // namespace tarnwell::host
