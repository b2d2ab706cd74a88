// The program, without the way the system starts it.
#pragma once

#include <string>
#include <vector>

namespace tarnwell::host
{

// The arguments without the program's name. Returns the exit code.
int RunProgram(const std::vector<std::u16string>& arguments);

} // namespace tarnwell::host
