// The two forms of lines that LIST gives.
#pragma once

#include "platform/posix/internet/listingparser.h"

namespace tarnwell::posix
{

// As "ls -l" prints it, in the many ways that servers and languages have.
std::optional<ListedEntry> ParseUnixLine(std::string_view line, Moment now);
// As "dir" prints it.
std::optional<ListedEntry> ParseDosLine(std::string_view line);

} // namespace tarnwell::posix
