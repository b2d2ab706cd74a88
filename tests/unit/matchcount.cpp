#include "unit/matchcount.h"

#include "frame/pattern.h"

#include <atomic>

namespace
{

std::atomic<std::uint64_t> matches{0};

} // namespace

// The build puts the second in the place of the function that matches.
extern "C" bool __real_MatchPattern(const tarnwell::CompiledPattern& pattern,
                                    std::u16string_view text, bool whole, tarnwell::Groups& groups);

extern "C" bool __wrap_MatchPattern(const tarnwell::CompiledPattern& pattern,
                                    std::u16string_view text, bool whole, tarnwell::Groups& groups)
{
    ++matches;
    return __real_MatchPattern(pattern, text, whole, groups);
}

namespace tarnwell::test
{

std::uint64_t MatchCount()
{
    return matches;
}

} // namespace tarnwell::test
