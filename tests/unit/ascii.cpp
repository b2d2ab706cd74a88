// Text of ASCII characters between bytes and units.
#include "platform/ascii.h"

#include <gmock/gmock.h>

#include <string>

namespace tarnwell::test
{

namespace
{

// Longer than two of the blocks in which it goes.
constexpr std::size_t longest = 20;

std::string Letters(std::size_t size)
{
    std::string text;
    for (std::size_t i = 0; i < size; ++i)
        text += static_cast<char>('a' + i);
    return text;
}

std::u16string Widened(std::string_view ascii)
{
    return {ascii.begin(), ascii.end()};
}

TEST(Ascii, IsWidenedUpToTheFirstByteThatIsNone)
{
    for (std::size_t size = 0; size <= longest; ++size)
    {
        for (std::size_t other = 0; other <= size; ++other)
        {
            std::string bytes = Letters(size);
            if (other < size)
                bytes[other] = '\x80';
            std::u16string units(size + 1, u'#');
            EXPECT_EQ(WidenAscii(bytes, units.data()), other);
            EXPECT_EQ(units.substr(0, other), Widened(Letters(other)));
            EXPECT_EQ(units.back(), u'#') << "beyond the room";
        }
    }
}

TEST(Ascii, IsNarrowedOnlyAsAWhole)
{
    for (const char16_t unit : {u'\x80', u'\xFF', u'\u0161', u'\u6161', u'\xFFFF'})
    {
        for (std::size_t size = 0; size <= longest; ++size)
        {
            for (std::size_t other = 0; other < size; ++other)
            {
                std::u16string units = Widened(Letters(size));
                units[other] = unit;
                std::string bytes(size, '#');
                EXPECT_FALSE(NarrowAscii(units, bytes.data()));
            }
            std::string bytes(size + 1, '#');
            EXPECT_TRUE(NarrowAscii(Widened(Letters(size)), bytes.data()));
            EXPECT_EQ(bytes, Letters(size) + "#");
        }
    }
}

TEST(Ascii, TextsEndAtTheirFirstTerminator)
{
    for (std::size_t size = 0; size <= longest; ++size)
    {
        for (const char16_t unit : {u'\x0001', u'\x8000', u'\x8001', u'\xFFFF'})
            EXPECT_EQ(TerminatorIn(std::u16string(size, unit)), size);
        for (std::size_t end = 0; end < size; ++end)
        {
            // What stands behind an end looks like one in parts.
            std::u16string units(size, u'\x0100');
            units[end] = u'\0';
            EXPECT_EQ(TerminatorIn(units), end);
            units.back() = u'\0';
            EXPECT_EQ(TerminatorIn(units), end);
        }
    }
}

TEST(Ascii, GoesFromTheFirstCharacterToTheLast)
{
    const std::string ends{'\x00', '\x7F'};
    std::u16string units(2, u'#');
    EXPECT_EQ(WidenAscii(ends, units.data()), 2U);
    EXPECT_EQ(units, std::u16string({u'\x00', u'\x7F'}));
    std::string bytes(2, '#');
    EXPECT_TRUE(NarrowAscii(units, bytes.data()));
    EXPECT_EQ(bytes, ends);
}

} // namespace

} // namespace tarnwell::test
