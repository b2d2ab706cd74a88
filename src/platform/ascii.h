// Text of ASCII characters between bytes and UTF-16 units, and where a text ends. Most of what the
// systems and the clients say is such text, so this goes by blocks, for which compilers have
// instructions.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace tarnwell
{

namespace detail
{

inline constexpr std::size_t asciiBlock = 8;

// False, with nothing done, if there is anything but ASCII in the block.
template <class Unit> bool WidenBlock(const char* bytes, Unit* units)
{
    std::uint64_t block = 0;
    std::memcpy(&block, bytes, sizeof block);
    if ((block & 0x8080808080808080) != 0)
        return false;
    std::array<char, asciiBlock> from;
    std::array<Unit, asciiBlock> to;
    std::memcpy(from.data(), &block, sizeof from);
    std::transform(from.begin(), from.end(), to.begin(),
                   [](char byte) { return static_cast<Unit>(static_cast<unsigned char>(byte)); });
    std::memcpy(units, to.data(), sizeof to);
    return true;
}

// Likewise.
inline bool NarrowBlock(const char16_t* units, char* bytes)
{
    std::array<std::uint64_t, 2> block;
    std::memcpy(block.data(), units, sizeof block);
    if (((block[0] | block[1]) & 0xFF80FF80FF80FF80) != 0)
        return false;
    std::array<char16_t, asciiBlock> from;
    std::array<char, asciiBlock> to;
    std::memcpy(from.data(), block.data(), sizeof from);
    std::transform(from.begin(), from.end(), to.begin(),
                   [](char16_t unit) { return static_cast<char>(unit); });
    std::memcpy(bytes, to.data(), sizeof to);
    return true;
}

} // namespace detail

// Puts the ASCII characters that `bytes` begins with at `units`, where there is room for all of
// `bytes`. Their number.
template <class Unit> std::size_t WidenAscii(std::string_view bytes, Unit* units)
{
    constexpr std::size_t block = detail::asciiBlock;
    const std::size_t size = bytes.size();
    std::size_t done = 0;
    while (size - done >= block && detail::WidenBlock(bytes.data() + done, units + done))
        done += block;
    // The end of a longer text is in one more block, which begins in the one before.
    if (size >= block && size - done < block &&
        detail::WidenBlock(bytes.data() + size - block, units + size - block))
        return size;
    for (; done < size && (bytes[done] & 0x80) == 0; ++done)
        units[done] = static_cast<Unit>(bytes[done]);
    return done;
}

// Puts `units` at `bytes`. False if one isn't ASCII: then nothing there is of use.
inline bool NarrowAscii(std::u16string_view units, char* bytes)
{
    constexpr std::size_t block = detail::asciiBlock;
    const std::size_t size = units.size();
    if (size < block)
    {
        std::transform(units.begin(), units.end(), bytes,
                       [](char16_t unit) { return static_cast<char>(unit); });
        return std::all_of(units.begin(), units.end(), [](char16_t unit) { return unit < 0x80; });
    }
    for (std::size_t done = 0; size - done >= block; done += block)
    {
        if (!detail::NarrowBlock(units.data() + done, bytes + done))
            return false;
    }
    return detail::NarrowBlock(units.data() + size - block, bytes + size - block);
}

// Where the first terminator is, or the end.
inline std::size_t TerminatorIn(std::u16string_view units)
{
    constexpr std::uint64_t ones = 0x0001000100010001;
    constexpr std::uint64_t highBits = 0x8000800080008000;
    constexpr std::size_t blockUnits = sizeof ones / sizeof(char16_t);
    static_assert(std::endian::native == std::endian::little, "the first unit has the lowest bits");
    std::size_t at = 0;
    for (; units.size() - at >= blockUnits; at += blockUnits)
    {
        std::uint64_t block = 0;
        std::memcpy(&block, units.data() + at, sizeof block);
        // The lowest bit that is set is the high one of the first unit that is 0. Those above it
        // can be set by a borrow.
        const std::uint64_t ends = (block - ones) & ~block & highBits;
        if (ends != 0)
            return at + static_cast<std::size_t>(std::countr_zero(ends)) / 16;
    }
    while (at < units.size() && units[at] != u'\0')
        ++at;
    return at;
}

} // namespace tarnwell
