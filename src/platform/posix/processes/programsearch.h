// Where a program is.
#pragma once

#include <optional>
#include <string>

namespace tarnwell::posix
{

// The file of the program `name`, searched for in the folders of the PATH, or `name` itself if it
// holds a separator. A folder that isn't named by its whole path is passed over: what lies in the
// current one may be somebody else's repository. So is whatever can't be run, or looked at.
std::optional<std::string> FindProgram(const std::string& name);

} // namespace tarnwell::posix
