// Help, and the checks that need to know the commands.
#pragma once

#include "arguments.h"
#include "commands.h"

namespace tarnwell::host
{

// What --help prints, in lines of up to `width` columns: of a command, or of the whole program
// where the line names none. Throws UsageError for one that there isn't.
std::u16string HelpText(const CommandLine& line, std::size_t width);

// What --version prints.
std::u16string VersionText();

// The command that is meant. Throws UsageError if there is none such, or if it doesn't go with
// the operands and options.
const Command& CommandOf(const CommandLine& line);

// How the user types an example.
std::u16string LineOf(const Example& example);

} // namespace tarnwell::host
