// A client without the module.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tarnwell::bench
{

struct BareRun
{
    std::vector<std::string> arguments; // the program's name first
    std::string folder;                 // to run in
};

// Starts the client with its output going to an unlinked file in the folder where the module has
// its own, waits for it, and reads what it has written to the end; the number of bytes. Throws if
// it fails.
std::uint64_t RunBare(const BareRun& run);

} // namespace tarnwell::bench
