// The program, without the way the system starts it.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace tarnwell::host
{

// `arguments` gives them without the program's name. Returns the exit code; nothing is thrown,
// whatever fails.
int RunProgram(const std::function<std::vector<std::u16string>()>& arguments) noexcept;

} // namespace tarnwell::host
