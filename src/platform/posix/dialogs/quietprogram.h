// Other programs of the desktop, run for what they do and not for what they print.
#pragma once

#include "platform/win32.h"

#include <optional>
#include <string>
#include <vector>

namespace tarnwell::posix
{

struct ProgramEnd
{
    // Of the start; 0 if there was one.
    int number;
    // 128 and the signal's number if a signal ended it. Nothing if the host took the code away.
    std::optional<DWORD> exitCode;
};

// Runs the program that the arguments begin with, searched for on the PATH, to its end. Its input
// is empty, its output goes nowhere.
ProgramEnd RunQuietly(std::vector<std::string> arguments);

} // namespace tarnwell::posix
