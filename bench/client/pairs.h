// The module and the bare client, side by side.
#pragma once

#include "client/bare.h"

#include <tarnwell/pointers.h>
#include <tarnwell/tarnwell.h>

#include <functional>
#include <string>
#include <vector>

namespace tarnwell::bench
{

// A file system of the module, which is loaded by path as hosts do it. Throws if there is none.
ComPtr<IFileSystem> MakeFileSystem(const GUID& classId);

struct Pair
{
    std::string name;
    int rounds;
    double factor; // how many times the bare run's time the module may take
    std::function<void()> module;
    std::function<void()> bare;
};

// Opening the file of `size` bytes at `address` and reading it to its end.
Pair Reading(std::string name, int rounds, double factor, const ComPtr<IFileSystem>& system,
             const std::string& address, std::uint64_t size, const BareRun& bare);

// GetRevisions of the file at `address`, which has `count` entries.
Pair ListingRevisions(std::string name, int rounds, double factor,
                      const ComPtr<IFileSystem>& system, const std::string& address,
                      std::uint32_t count, const BareRun& bare);

// Measures the pairs and prints a row of the table for each, with their rounds interleaved. 0 if
// all are within their limits.
int Measure(const std::vector<Pair>& pairs);

// Defined by each program: makes what is measured, and gives what Measure gives.
int Run();

} // namespace tarnwell::bench
