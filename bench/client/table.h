// The rows that the benchmarks print, so that those of all make one table.
#pragma once

#include "support/costs.h"

#include <string>

namespace tarnwell::bench
{

struct Row
{
    std::string name;
    std::size_t pairs;
    std::string module;    // what it took, with its unit
    std::string bare;      // what the least took that does the same
    std::string ratio;     // of the two
    std::string processor; // the ratio of processor time; empty if there is none
    std::string goal;
    bool isWithin;
};

void PrintHeader();
void PrintRow(const Row& row);

std::string InMilliseconds(double seconds);
std::string InMegabytes(double bytes);
// The middle, and the half around it.
std::string Shown(const Spread& spread);
std::string Shown(double ratio);

// A row of memory: the ratio of the two, and whether it is at most `goal`.
bool PrintMemory(const std::string& name, double module, double bare, double goal);

} // namespace tarnwell::bench
