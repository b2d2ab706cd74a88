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
inline constexpr int untold = 98;

// Makes the file `started` and waits until there is a file `told`. False if there never is.
bool Await(const std::string& started, const std::string& told);

void Print(const std::vector<std::string>& texts);

} // namespace tarnwell::test
