// The texts that users are promised, in both languages.
#pragma once

#include <string_view>

namespace tarnwell::test
{

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
