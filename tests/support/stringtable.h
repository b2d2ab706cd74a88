// The texts in a module's string tables, as the platform's resource operations show them.
#pragma once

#include "platform/win32.h"

#include <optional>
#include <string>
#include <vector>

namespace tarnwell::test
{

inline constexpr unsigned textsInBlock = 16;

// All texts of block `name`; nothing if the module has no such block in this language.
inline std::optional<std::vector<std::u16string>> ReadBlock(HMODULE module, WORD name,
                                                            LANGID language)
{
    const HRSRC found = FindResourceExW(module, RT_STRING, MAKEINTRESOURCEW(name), language);
    if (found == nullptr)
        return std::nullopt;
    const auto* unit = static_cast<const char16_t*>(LockResource(LoadResource(module, found)));
    const char16_t* const end = unit + SizeofResource(module, found) / sizeof(char16_t);
    std::vector<std::u16string> texts;
    while (unit < end && texts.size() < textsInBlock)
    {
        const std::size_t length = *unit++;
        texts.emplace_back(unit, length);
        unit += length;
    }
    return texts;
}

// Empty if there is no such text.
inline std::u16string ReadText(HMODULE module, unsigned id, LANGID language)
{
    const auto block = ReadBlock(module, static_cast<WORD>(id / textsInBlock + 1), language);
    return block ? block->at(id % textsInBlock) : std::u16string();
}

} // namespace tarnwell::test
