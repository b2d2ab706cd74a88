// The host program on a terminal of its own.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace tarnwell::test
{

struct TerminalRun
{
    int exitCode = -1; // -1 if a signal ended it
    std::string shown;
};

inline constexpr const char* ctrlC = "\x03";

// Runs the program with a terminal of its own. At first, and each time something is shown, which
// what is typed is, too, `type` gets all that was shown so far and gives what is typed then. A
// terminal without a width has none to tell.
TerminalRun RunOnTerminal(const std::vector<std::string>& arguments,
                          const std::function<std::string(const std::string&)>& type,
                          bool isColoured = false, unsigned short width = 0);

} // namespace tarnwell::test
