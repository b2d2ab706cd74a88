#include "unit/matchcount.h"

#include "frame/pattern.h"

#include <atomic>

// The linker names of the two functions that match, which the build wraps.
#define MATCH_WHOLE                                                                                \
    "_ZNK8tarnwell7Pattern10MatchWholeESt17basic_string_viewIDsSt11char_traitsIDsEERSt6vectorIS4_" \
    "SaIS4_EE"
#define SEARCH                                                                                     \
    "_ZNK8tarnwell7Pattern6SearchESt17basic_string_viewIDsSt11char_traitsIDsEERSt6vectorIS4_"      \
    "SaIS4_EE"

namespace tarnwell::test
{
namespace
{

std::atomic<std::uint64_t> matches{0};

} // namespace

bool RealMatchWhole(const Pattern*, std::u16string_view, Groups&) __asm__("__real_" MATCH_WHOLE);
bool RealSearch(const Pattern*, std::u16string_view, Groups&) __asm__("__real_" SEARCH);
bool CountedMatchWhole(const Pattern*, std::u16string_view, Groups&) __asm__("__wrap_" MATCH_WHOLE);
bool CountedSearch(const Pattern*, std::u16string_view, Groups&) __asm__("__wrap_" SEARCH);

bool CountedMatchWhole(const Pattern* pattern, std::u16string_view text, Groups& groups)
{
    ++matches;
    return RealMatchWhole(pattern, text, groups);
}

bool CountedSearch(const Pattern* pattern, std::u16string_view text, Groups& groups)
{
    ++matches;
    return RealSearch(pattern, text, groups);
}

std::uint64_t MatchCount()
{
    return matches;
}

} // namespace tarnwell::test
