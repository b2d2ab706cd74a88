// Names between bytes and UTF-16: every sequence of bytes survives the way there and back.
#include <tarnwell/text.h>

#include <gmock/gmock.h>

#include <vector>

namespace tarnwell::test
{

namespace
{

using testing::Eq;
using testing::Optional;

// The bytes at which the form of UTF-8 changes, and their neighbours.
std::vector<char> TellingBytes()
{
    std::vector<char> bytes;
    for (const int byte :
         {0x01, 0x2F, 0x41, 0x7F, 0x80, 0x81, 0x8F, 0x90, 0x9F, 0xA0, 0xBF, 0xC0, 0xC1, 0xC2, 0xDF,
          0xE0, 0xE1, 0xEC, 0xED, 0xEE, 0xEF, 0xF0, 0xF1, 0xF3, 0xF4, 0xF5, 0xF8, 0xFC, 0xFE, 0xFF})
        bytes.push_back(static_cast<char>(byte));
    return bytes;
}

std::vector<char> AllBytes()
{
    std::vector<char> bytes;
    for (int byte = 0; byte < 256; ++byte)
        bytes.push_back(static_cast<char>(byte));
    return bytes;
}

// How many strings of exactly `length` of these bytes don't come back as they were.
std::size_t CountBroken(const std::vector<char>& bytes, std::size_t length, std::string& prefix)
{
    if (prefix.size() == length)
        return EncodeName(DecodeName(prefix)) == prefix ? 0 : 1;
    std::size_t broken = 0;
    for (const char byte : bytes)
    {
        prefix += byte;
        broken += CountBroken(bytes, length, prefix);
        prefix.pop_back();
    }
    return broken;
}

TEST(Names, AllShortByteStringsComeBack)
{
    std::string prefix;
    EXPECT_EQ(CountBroken(AllBytes(), 1, prefix), 0U);
    EXPECT_EQ(CountBroken(AllBytes(), 2, prefix), 0U);
    EXPECT_EQ(CountBroken(TellingBytes(), 3, prefix), 0U);
    EXPECT_EQ(CountBroken(TellingBytes(), 4, prefix), 0U);
}

TEST(Names, AllCodePointsComeBack)
{
    for (char32_t point = 1; point <= 0x10FFFF; ++point)
    {
        if (point >= 0xD800 && point <= 0xDFFF)
            continue;
        std::u16string text;
        detail::AppendUtf16(text, point);
        const auto bytes = EncodeName(text);
        ASSERT_TRUE(bytes) << static_cast<std::uint32_t>(point);
        ASSERT_EQ(DecodeName(*bytes), text) << static_cast<std::uint32_t>(point);
    }
}

struct NameRow
{
    std::string_view bytes;
    std::u16string_view text;
};

constexpr NameRow nameRows[] = {
    {"", u""},
    {"a b.txt", u"a b.txt"},
    {"\xC3\xA9", u"\u00E9"},
    {"\xE3\x83\x95", u"\u30D5"},
    {"\xEF\xBF\xBF", u"\uFFFF"},
    {"\xF0\x9F\x98\x80", u"\U0001F600"},
    {"\xF4\x8F\xBF\xBF", u"\U0010FFFF"},
    {"\xFF", u"\xDCFF"},
    {"a\x80z", u"a\xDC80z"},
    {"\xC3", u"\xDCC3"},                               // cut short
    {"\xC3(", u"\xDCC3("},                             // no tail
    {"\xC0\xAF", u"\xDCC0\xDCAF"},                     // overlong
    {"\xE0\x9F\xBF", u"\xDCE0\xDC9F\xDCBF"},           // overlong
    {"\xF0\x8F\xBF\xBF", u"\xDCF0\xDC8F\xDCBF\xDCBF"}, // overlong
    {"\xED\xA0\x80", u"\xDCED\xDCA0\xDC80"},           // a surrogate
    {"\xED\xB2\x80", u"\xDCED\xDCB2\xDC80"},           // a surrogate that would stand for a byte
    {"\xF4\x90\x80\x80", u"\xDCF4\xDC90\xDC80\xDC80"}, // past the last code point
    {"\xE3\x83", u"\xDCE3\xDC83"},                     // cut short
    {"\xE3\x83\xC3\xA9", u"\xDCE3\xDC83\u00E9"},       // valid again behind it
};

TEST(Names, DecodeToTheTextOrToOneUnitForEachOddByte)
{
    for (const NameRow& row : nameRows)
    {
        EXPECT_EQ(DecodeName(row.bytes), row.text);
        EXPECT_THAT(EncodeName(row.text), Optional(Eq(row.bytes)));
    }
}

TEST(Names, LoneSurrogatesThatStandForNoByteNameNothing)
{
    for (char16_t unit = 0xD800; unit <= 0xDFFF; ++unit)
    {
        const bool standsForByte = unit >= 0xDC80 && unit <= 0xDCFF;
        EXPECT_EQ(EncodeName(std::u16string(1, unit)).has_value(), standsForByte)
            << static_cast<unsigned>(unit);
        EXPECT_EQ(EncodeName(std::u16string(1, unit) + u"a").has_value(), standsForByte)
            << static_cast<unsigned>(unit);
    }
    EXPECT_EQ(EncodeName(u"\xD800\xD800\xDC80"), std::nullopt);
}

TEST(Names, AppendingKeepsWhatWasThere)
{
    std::u16string text = u"folder/";
    AppendDecodedName(text, "\xC3\xA9");
    EXPECT_EQ(text, u"folder/\u00E9");
}

} // namespace

} // namespace tarnwell::test
