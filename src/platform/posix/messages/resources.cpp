// The module's texts as Windows keeps them: per language, blocks of 16 texts, each text with its
// length in front. All of it is laid out by the compiler.
#include "platform/posix/messages/languages.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <string_view>

namespace
{

constexpr std::size_t textsInBlock = 16;

struct Row
{
    WORD id;
    std::u16string_view english;
    std::u16string_view japanese;
};

constexpr Row rows[] = {
#define TARNWELL_MESSAGE(name, id, english, japanese) {id, u"" english, u"" japanese},
#include "resources/messages.inc"
#undef TARNWELL_MESSAGE
};

constexpr bool Precedes(const Row& left, const Row& right)
{
    return left.id < right.id;
}
static_assert(std::is_sorted(std::begin(rows), std::end(rows), Precedes));

constexpr std::size_t firstBlock = rows[0].id / textsInBlock;
constexpr std::size_t blockCount = std::rbegin(rows)->id / textsInBlock - firstBlock + 1;

using Text = std::u16string_view Row::*;

constexpr std::size_t UnitsIn(Text text)
{
    std::size_t units = blockCount * textsInBlock;
    for (const Row& row : rows)
        units += (row.*text).size();
    return units;
}

// All blocks of one language, end to end.
template <Text text> struct Table
{
    std::array<char16_t, UnitsIn(text)> units{};
    // Where each block begins, and where the last one ends.
    std::array<std::size_t, blockCount + 1> begins{};

    constexpr Table()
    {
        std::size_t end = 0;
        const Row* row = std::begin(rows);
        for (std::size_t slot = 0; slot < blockCount * textsInBlock; ++slot)
        {
            if (slot % textsInBlock == 0)
                begins[slot / textsInBlock] = end;
            const std::size_t id = firstBlock * textsInBlock + slot;
            std::u16string_view content;
            if (row != std::end(rows) && row->id == id)
                content = (row++)->*text;
            units[end++] = static_cast<char16_t>(content.size());
            for (const char16_t unit : content)
                units[end++] = unit;
        }
        begins[blockCount] = end;
    }
};

template <Text text> constexpr Table<text> table;

struct Block
{
    WORD name;
    LANGID language;
    const char16_t* units;
    DWORD bytes;
};

using Blocks = std::array<Block, blockCount>;

template <Text text> constexpr Blocks BlocksOf(LANGID language)
{
    Blocks blocks{};
    for (std::size_t i = 0; i < blockCount; ++i)
    {
        const std::size_t begin = table<text>.begins[i];
        const std::size_t size = (table<text>.begins[i + 1] - begin) * sizeof(char16_t);
        // Blocks are named from 1.
        blocks[i] = {static_cast<WORD>(firstBlock + i + 1), language,
                     table<text>.units.data() + begin, static_cast<DWORD>(size)};
    }
    return blocks;
}

// In the order in which Windows walks them.
constexpr std::array<Blocks, 2> languages = {BlocksOf<&Row::japanese>(tarnwell::japanese),
                                             BlocksOf<&Row::english>(tarnwell::english)};

BOOL Fail(DWORD error)
{
    SetLastError(error);
    return 0;
}

// Where block `name` stands in each language's blocks; `blockCount` and an error if nowhere.
std::size_t IndexOf(LPCWSTR type, LPCWSTR name)
{
    const Blocks& blocks = languages[0];
    const auto named = [name](const Block& block) {
        return MAKEINTRESOURCEW(block.name) == name;
    };
    const auto found =
        type == RT_STRING ? std::find_if(blocks.begin(), blocks.end(), named) : blocks.end();
    if (found == blocks.end())
        Fail(type == RT_STRING ? ERROR_RESOURCE_NAME_NOT_FOUND : ERROR_RESOURCE_TYPE_NOT_FOUND);
    return static_cast<std::size_t>(found - blocks.begin());
}

const Block& BlockBehind(HRSRC resource)
{
    return *static_cast<const Block*>(resource);
}

} // namespace

extern "C" BOOL EnumResourceNamesW(HMODULE module, LPCWSTR type, ENUMRESNAMEPROCW callback,
                                   LONG_PTR param)
{
    if (type != RT_STRING)
        return Fail(ERROR_RESOURCE_TYPE_NOT_FOUND);
    for (const Block& block : languages[0])
    {
        // The contract hands a name out as writable; a number has nothing to write to.
        if (!callback(module, type, const_cast<LPWSTR>(MAKEINTRESOURCEW(block.name)), param))
            return Fail(ERROR_RESOURCE_ENUM_USER_STOP);
    }
    return 1;
}

extern "C" BOOL EnumResourceLanguagesW(HMODULE module, LPCWSTR type, LPCWSTR name,
                                       ENUMRESLANGPROCW callback, LONG_PTR param)
{
    const std::size_t index = IndexOf(type, name);
    if (index == blockCount)
        return 0;
    for (const Blocks& blocks : languages)
    {
        if (!callback(module, type, name, blocks[index].language, param))
            return Fail(ERROR_RESOURCE_ENUM_USER_STOP);
    }
    return 1;
}

extern "C" HRSRC FindResourceExW(HMODULE, LPCWSTR type, LPCWSTR name, WORD language)
{
    const std::size_t index = IndexOf(type, name);
    if (index == blockCount)
        return nullptr;
    for (const Blocks& blocks : languages)
    {
        if (blocks[index].language == language)
            return const_cast<Block*>(&blocks[index]);
    }
    SetLastError(ERROR_RESOURCE_LANG_NOT_FOUND);
    return nullptr;
}

extern "C" HGLOBAL LoadResource(HMODULE, HRSRC resource)
{
    return const_cast<char16_t*>(BlockBehind(resource).units);
}

extern "C" void* LockResource(HGLOBAL resource)
{
    return resource;
}

extern "C" DWORD SizeofResource(HMODULE, HRSRC resource)
{
    return BlockBehind(resource).bytes;
}
