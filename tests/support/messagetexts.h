// The texts that users are promised, in both languages.
#pragma once

#include <string_view>

namespace tarnwell::test
{

// The identifiers of the two languages.
inline constexpr unsigned short english = 2057;
inline constexpr unsigned short japanese = 1041;

struct MessageTexts
{
    unsigned id;
    std::u16string_view english;
    std::u16string_view japanese;
};

inline constexpr MessageTexts messageTexts[] = {
#include "unit/messagetexts.inc"
};

} // namespace tarnwell::test
