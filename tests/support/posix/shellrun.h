// Running a command of the shell for its output.
#pragma once

#include <string>

namespace tarnwell::test
{

// One word for the shell.
std::string ShellQuoted(const std::string& text);

// What `command` prints, on both of its streams, without the line feed at its end. Throws if the
// command fails.
std::string ShellRun(const std::string& command);

} // namespace tarnwell::test
