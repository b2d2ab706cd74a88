// What the program does that the tests of processes start.
#pragma once

#include <string>
#include <vector>

namespace tarnwell::test
{

// `arguments` without the program's name. The result is the exit code; what is printed is bytes,
// lists with a zero behind each text.
int RunCommand(const std::vector<std::string>& arguments,
               const std::vector<std::string>& environment);

inline constexpr int unknownCommand = 99;

void Print(const std::vector<std::string>& texts);

} // namespace tarnwell::test
