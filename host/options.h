// The options: what reads them, and what tells of them.
#pragma once

#include "arguments.h"
#include "words.h"

#include <span>

namespace tarnwell::host
{

struct Option
{
    const char16_t* name;
    // Another name, or null.
    const char16_t* other;
    // What stands for its value; null for an option that is there or not.
    const char16_t* value;
    // Word::None for those that only some commands take: these tell what it means there.
    Word help;
    void (*take)(CommandLine& line, const std::u16string& value);
};

std::span<const Option> Options();

// Null if there is none of this name.
const Option* FindOption(std::u16string_view name);

} // namespace tarnwell::host
