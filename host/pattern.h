// Patterns of names.
#pragma once

#include <string_view>

namespace tarnwell::host
{

// Whether the whole name matches: "*" stands for any text, "?" for one character, which may be a
// pair, and all else for itself. Takes time in the product of both lengths at most.
bool MatchesName(std::u16string_view pattern, std::u16string_view name);

} // namespace tarnwell::host
