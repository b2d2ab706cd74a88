// Local paths that lie in the working copy of a version control system.
#pragma once

#include <string>

namespace tarnwell::host
{

// How to ask for the history that the system has of the path, in words; empty where no working copy
// holds it. Nothing is run.
std::u16string WhereHistoryIs(const std::u16string& path);

} // namespace tarnwell::host
