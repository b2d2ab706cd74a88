// What this run of the client was asked, as it arrived.
#pragma once

#include <string>
#include <vector>

namespace tarnwell::relay
{

struct Asked
{
    std::string commandLine;         // as it stands
    std::vector<std::string> client; // its name and its arguments
    std::string folder;
    std::vector<std::string> environment;
};

// All texts are UTF-8. `arguments` are those of the program's entry, closed by a null.
Asked AskedOf(wchar_t** arguments);

// This process's variables, each with its value behind "=".
std::vector<std::string> Environment();

// The value of a variable; empty without it.
std::string ValueOf(const Asked& asked, const std::string& name);

// For tests that look at what arrived: the command line, the folder, the number of bytes that
// standard input had to its end, and the environment's entries, a NUL behind each.
void Record(const Asked& asked, const std::string& file);

} // namespace tarnwell::relay
