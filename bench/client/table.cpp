#include "client/table.h"

#include <cstdio>

namespace tarnwell::bench
{

namespace
{

std::string Formatted(const char* format, auto... values)
{
    char text[100];
    std::snprintf(text, sizeof text, format, values...);
    return text;
}

} // namespace

void PrintHeader()
{
    std::puts("| What | Pairs | Module | Bare | By the clock | By the processor | Goal | |\n"
              "|---|---|---|---|---|---|---|---|");
}

void PrintRow(const Row& row)
{
    std::printf("| %s | %zu | %s | %s | %s | %s | %s | %s |\n", row.name.c_str(), row.pairs,
                row.module.c_str(), row.bare.c_str(), row.ratio.c_str(), row.processor.c_str(),
                row.goal.c_str(), row.isWithin ? "within" : "beyond");
    std::fflush(stdout);
}

std::string InMilliseconds(double seconds)
{
    return Formatted("%.1f ms", seconds * 1e3);
}

std::string InMegabytes(double bytes)
{
    return Formatted("%.0f MB", bytes / 1e6);
}

std::string Shown(const Spread& spread)
{
    return Formatted("%.3f (%.3f to %.3f)", spread.middle, spread.low, spread.high);
}

std::string Shown(double ratio)
{
    return Formatted("%.2f", ratio);
}

bool PrintMemory(const std::string& name, double module, double bare, double goal)
{
    const double ratio = module / bare;
    PrintRow({name, 1, InMegabytes(module), InMegabytes(bare), Shown(ratio), "", Shown(goal),
              ratio <= goal});
    return ratio <= goal;
}

} // namespace tarnwell::bench
