// UTF-8 from programs, well-formed or not.
#include "support/opened.h"
#include "support/wine.h"

#include <gtest/gtest.h>

namespace tarnwell::test
{
namespace
{

int Convert(std::string_view bytes, std::u16string& units)
{
    return MultiByteToWideChar(CP_UTF8, 0, bytes.data(), static_cast<int>(bytes.size()),
                               Wide(units.data()), static_cast<int>(units.size()));
}

int SizeOf(std::string_view bytes)
{
    std::u16string none;
    return Convert(bytes, none);
}

std::u16string Decoded(std::string_view bytes)
{
    std::u16string units(static_cast<std::size_t>(SizeOf(bytes)), u'?');
    EXPECT_EQ(Convert(bytes, units), static_cast<int>(units.size()));
    return units;
}

struct Row
{
    std::string_view bytes;
    std::u16string_view units;
};

void ExpectDecoded(const std::vector<Row>& rows)
{
    for (const auto& [bytes, units] : rows)
        EXPECT_EQ(Decoded(bytes), units) << testing::PrintToString(bytes);
}

TEST(MultiByte, WellFormedTextIsKept)
{
    using namespace std::literals;
    ExpectDecoded({
        {"a", u"a"},
        {"a\0b"sv, u"a\0b"sv},
        {"line\r\n\tfeed", u"line\r\n\tfeed"},
        {"\x7F", u"\u007f"},
        {"\xC2\x80", u"\u0080"},
        {"\xDF\xBF", u"\u07ff"},
        {"\xE0\xA0\x80", u"\u0800"},
        {"\xED\x9F\xBF", u"\ud7ff"},
        {"\xEE\x80\x80", u"\ue000"},
        {"\xEF\xBB\xBFx", u"\ufeffx"},
        {"\xEF\xBF\xBF", u"\uffff"},
        {"\xF0\x90\x80\x80", u"\U00010000"},
        {"\xF4\x8F\xBF\xBF", u"\U0010ffff"},
        {"0123456789abcdef\xC3\xA4 0123456789", u"0123456789abcdef\u00e4 0123456789"},
        {"0123456\xE6\x97\xA5 01234567\xF0\x9F\x98\x80", u"0123456\u65e5 01234567\U0001f600"},
    });
}

TEST(MultiByte, WhatIsIllFormedIsReplaced)
{
    ExpectDecoded({
        {"\x80", u"\ufffd"},
        {"\x80\xBF", u"\ufffd\ufffd"},
        {"a\xFFz", u"a\ufffdz"},
        {"\xFE\xFF", u"\ufffd\ufffd"},
        {"\xC0\x80", u"\ufffd\ufffd"},
        {"\xC1\xBF", u"\ufffd\ufffd"},
        {"\xF5\x80", u"\ufffd\ufffd"},
        // In the system's code page rather than UTF-8.
        {"gr\xFC\xDF"
         "e",
         u"gr\ufffd\ufffde"},
        {"\xC3(", u"\ufffd("},
        {"\xE6\x97(", u"\ufffd("},
        {"\xF0\x9F\x98(", u"\ufffd("},
        {"\xC3\xC3\xA4", u"\ufffd\u00e4"},
        {"\xE6\x97\xE6\x97\xA5", u"\ufffd\u65e5"},
    });
}

TEST(MultiByte, TruncatedSequencesAreOneReplacementEach)
{
    ExpectDecoded({
        {"a\xC3", u"a\ufffd"},
        {"a\xE6", u"a\ufffd"},
        {"a\xE6\x97", u"a\ufffd"},
        {"a\xF0", u"a\ufffd"},
        {"a\xF0\x9F", u"a\ufffd"},
        {"a\xF0\x9F\x98", u"a\ufffd"},
        {"12345678\xF0\x9F\x98", u"12345678\ufffd"},
    });
}

TEST(MultiByte, OverlongFormsAndSurrogatesAreReplacedByteByByte)
{
    if (IsUnderWine())
        GTEST_SKIP() << "Wine takes several of these bytes together";
    ExpectDecoded({
        {"\xE0\x80\x80", u"\ufffd\ufffd\ufffd"},
        {"\xE0\x9F\xBF", u"\ufffd\ufffd\ufffd"},
        {"\xED\xA0\x80", u"\ufffd\ufffd\ufffd"},
        {"\xED\xBF\xBF", u"\ufffd\ufffd\ufffd"},
        {"\xF0\x8F\xBF\xBF", u"\ufffd\ufffd\ufffd\ufffd"},
        {"\xF4\x90\x80\x80", u"\ufffd\ufffd\ufffd\ufffd"},
    });
}

TEST(MultiByte, MegabytesAreConverted)
{
    std::string bytes;
    std::u16string units;
    while (bytes.size() < 2'000'000)
    {
        bytes += "commit by J\xC3\xBCrgen \xF0\x9F\x98\x80 with a long subject of plain text\n";
        units += u"commit by J\u00fcrgen \U0001f600 with a long subject of plain text\n";
    }
    EXPECT_TRUE(Decoded(bytes) == units);
}

void ExpectRoomNeeded(std::string_view bytes)
{
    std::u16string units(static_cast<std::size_t>(SizeOf(bytes)) - 1, u'?');
    EXPECT_EQ(ErrorOf(Convert(bytes, units)), ERROR_INSUFFICIENT_BUFFER) << bytes;
    units.resize(units.size() + 5);
    EXPECT_EQ(Convert(bytes, units), SizeOf(bytes)) << bytes;
}

TEST(MultiByte, BufferMustHoldAll)
{
    for (const std::string_view bytes : {"abc", "0123456789abcdef", "ab\xC3\xA4", "\xE6\x97\xA5z"})
        ExpectRoomNeeded(bytes);
}

TEST(MultiByte, BufferMustHoldBothHalvesOfAPair)
{
    if (IsUnderWine())
        GTEST_SKIP() << "Wine puts the first half";
    ExpectRoomNeeded("a\xF0\x9F\x98\x80");
}

TEST(MultiByte, NothingToConvertIsRefused)
{
    WCHAR units[4];
    EXPECT_EQ(ErrorOf(MultiByteToWideChar(CP_UTF8, 0, "", 0, units, 4)), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(ErrorOf(MultiByteToWideChar(CP_UTF8, 0, nullptr, 3, units, 4)),
              ERROR_INVALID_PARAMETER);
    EXPECT_EQ(ErrorOf(MultiByteToWideChar(CP_UTF8, 0, "abc", 3, nullptr, 4)),
              ERROR_INVALID_PARAMETER);
    EXPECT_EQ(ErrorOf(MultiByteToWideChar(CP_UTF8, 0, "abc", 3, units, -1)),
              ERROR_INVALID_PARAMETER);
}

} // namespace
} // namespace tarnwell::test
