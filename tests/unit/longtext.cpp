// Texts that come in many blocks: as if they had come in one.
#include "runner/longtext.h"

#include <gtest/gtest.h>

namespace tarnwell::test
{
namespace
{

// Ends in the middle of characters at every length of block, and has bytes that are none.
std::string Mixed()
{
    std::string bytes;
    while (bytes.size() < 200'000)
        bytes += "a\u00e4\u65e5\U0001F600\xFF\xC3\xE6\x97\xF0\x9F\x98\x80\x80\x80\x80";
    return bytes;
}

std::u16string TakenInBlocks(std::string_view bytes, std::size_t size, Decoding decoding)
{
    LongText text;
    for (; !bytes.empty(); bytes.remove_prefix(std::min(size, bytes.size())))
        text.Append(bytes.substr(0, size));
    EXPECT_FALSE(text.IsEmpty());
    std::u16string decoded = text.TakeDecoded(decoding);
    EXPECT_TRUE(text.IsEmpty());
    return decoded;
}

TEST(LongTexts, AreTheSameInBlocksOfAnySize)
{
    const std::string bytes = Mixed();
    for (const Decoding decoding : {Decoding::Utf8, Decoding::Widen})
    {
        const std::u16string whole = Decode(bytes, decoding);
        for (const std::size_t size : {1U, 7U, 1000U, 1001U, 10240U, 70'001U})
            EXPECT_TRUE(TakenInBlocks(bytes, size, decoding) == whole) << size;
    }
}

// Wherever it is cut to be converted.
TEST(LongTexts, AreDecodedAsTheirPartsAre)
{
    constexpr std::string_view unit = "a\u00e4\u65e5\U0001F600\xFF\xC3\xE6\x97";
    constexpr std::size_t count = 300'000;
    std::string bytes;
    std::u16string expected;
    for (std::size_t i = 0; i < count; ++i)
    {
        bytes += unit;
        expected += u"a\u00e4\u65e5\U0001F600\uFFFD\uFFFD\uFFFD";
    }
    for (std::size_t shift = 0; shift < unit.size(); ++shift)
        EXPECT_TRUE(Decode(std::string(shift, 'x') + bytes, Decoding::Utf8) ==
                    std::u16string(shift, u'x') + expected)
            << shift;
}

TEST(LongTexts, WithoutBytesAreEmpty)
{
    LongText text;
    EXPECT_TRUE(text.Append({}).IsEmpty());
    EXPECT_EQ(text.TakeDecoded(Decoding::Utf8), u"");
}

} // namespace
} // namespace tarnwell::test
