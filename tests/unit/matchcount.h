// How often addresses and other texts are matched against patterns.
#pragma once

#include <cstdint>

namespace tarnwell::test
{

// In this process, so far. The linker puts the counting before each match; the module knows
// nothing of it.
std::uint64_t MatchCount();

} // namespace tarnwell::test
