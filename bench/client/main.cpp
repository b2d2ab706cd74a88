// Where the benchmarks of clients begin.
#include "client/pairs.h"

#include <cstdio>
#include <exception>

int main()
{
    try
    {
        return tarnwell::bench::Run();
    }
    catch (const std::exception& failure)
    {
        std::fprintf(stderr, "%s\n", failure.what());
        return 2;
    }
}
