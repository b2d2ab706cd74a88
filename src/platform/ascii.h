// Text of ASCII characters between bytes and UTF-16 units. Most of what the systems and the clients
// say is such text, so this goes by blocks, for which compilers have instructions.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace tarnwell
{

namespace detail
{
inline constexpr std::size_t asciiBlock = 8;
} // namespace detail

// Puts the ASCII characters that `bytes` begins with at `units`, where there is room for all of
// `bytes`. Their number.
template <class Unit> std::size_t WidenAscii(std::string_view bytes, Unit* units)
{
    constexpr std::uint64_t highBits = 0x8080808080808080;
    std::size_t done = 0;
    for (; bytes.size() - done >= detail::asciiBlock; done += detail::asciiBlock)
    {
        std::uint64_t block = 0;
        std::memcpy(&block, bytes.data() + done, sizeof block);
        if ((block & highBits) != 0)
            break;
        std::array<char, detail::asciiBlock> from;
        std::array<Unit, detail::asciiBlock> to;
        std::memcpy(from.data(), &block, sizeof from);
        std::transform(from.begin(), from.end(), to.begin(), [](char byte) {
            return static_cast<Unit>(static_cast<unsigned char>(byte));
        });
        std::memcpy(units + done, to.data(), sizeof to);
    }
    for (; done < bytes.size() && (bytes[done] & 0x80) == 0; ++done)
        units[done] = static_cast<Unit>(bytes[done]);
    return done;
}

// Puts `units` at `bytes`. False if one isn't ASCII: then nothing there is of use.
inline bool NarrowAscii(std::u16string_view units, char* bytes)
{
    constexpr std::uint64_t highBits = 0xFF80FF80FF80FF80;
    for (; units.size() >= detail::asciiBlock; units.remove_prefix(detail::asciiBlock))
    {
        std::array<std::uint64_t, 2> block;
        std::memcpy(block.data(), units.data(), sizeof block);
        if (((block[0] | block[1]) & highBits) != 0)
            return false;
        std::array<char16_t, detail::asciiBlock> from;
        std::array<char, detail::asciiBlock> to;
        std::memcpy(from.data(), block.data(), sizeof from);
        std::transform(from.begin(), from.end(), to.begin(),
                       [](char16_t unit) { return static_cast<char>(unit); });
        std::memcpy(bytes, to.data(), sizeof to);
        bytes += to.size();
    }
    for (const char16_t unit : units)
    {
        if (unit >= 0x80)
            return false;
        *bytes++ = static_cast<char>(unit);
    }
    return true;
}

} // namespace tarnwell
