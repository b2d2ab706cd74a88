// Where the benchmarks begin that print rows of the table.
#include "client/pairs.h"
#include "client/table.h"

#include <cstdio>
#include <exception>
#include <string_view>

// With --rows, the table's head is left out.
int main(int argc, char** argv)
{
    try
    {
        if (argc < 2 || std::string_view(argv[1]) != "--rows")
            tarnwell::bench::PrintHeader();
        return tarnwell::bench::Run();
    }
    catch (const std::exception& failure)
    {
        std::fprintf(stderr, "%s\n", failure.what());
        return 2;
    }
}
