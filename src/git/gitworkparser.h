// What the Git client prints of its settings, and how it is told paths. Starts nothing, and takes
// any bytes.
#pragma once

#include <set>
#include <string>
#include <string_view>

namespace tarnwell
{

// The names of the filters that have settings, out of the names of all settings with a NUL behind
// each. Whatever is in one is a part of it.
std::set<std::string> ReadGitFilterNames(std::string_view settings);

// One line, without its end, that the client reads as this path.
std::string QuotedGitPath(std::string_view path);

} // namespace tarnwell
