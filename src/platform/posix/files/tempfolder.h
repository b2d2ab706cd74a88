// Where temporary files lie.
#pragma once

#include <string>

namespace tarnwell::posix
{

// TMPDIR if that is an absolute path, else /tmp; the current folder if that is too long for a path.
// Without a separator at its end, unless it came with one.
std::string TemporaryFolder();

} // namespace tarnwell::posix
