// What a fuzz target is made of: one function, and the promises that it holds the code to.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace tarnwell::fuzz
{

// Defined by each target. Called over and over, with any bytes; whatever it lets out is a finding.
void Try(std::string_view bytes);

// Ends the program if a promise doesn't hold, which the fuzzer reports together with the input.
inline void Expect(bool holds, const char* promise)
{
    if (holds)
        return;
    std::fprintf(stderr, "This doesn't hold: %s\n", promise);
    std::abort();
}

} // namespace tarnwell::fuzz
