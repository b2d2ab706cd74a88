// Dates and numbers as the Subversion client prints them.
#include "subversion/svnvalues.h"
#include "frame/pattern.h"

#include <gtest/gtest.h>

namespace tarnwell::test
{
namespace
{

// 5 March 2024 10:20:30 UTC.
constexpr std::uint64_t dateTime = 133541076300000000;

TEST(SvnDate, IsInMicroseconds)
{
    EXPECT_EQ(ParseSvnDate(u"2024-03-05T10:20:30.000000Z"), dateTime);
    EXPECT_EQ(ParseSvnDate(u"2024-03-05T10:20:30.123456Z"), dateTime + 1234560);
    EXPECT_EQ(ParseSvnDate(u"1970-01-01T00:00:00.000000Z"), 116444736000000000U);
}

TEST(SvnDate, AFractionOfAnyLengthIsANumberOfMicroseconds)
{
    EXPECT_EQ(ParseSvnDate(u"2024-03-05T10:20:30.5Z"), dateTime + 50);
    EXPECT_EQ(ParseSvnDate(u"2024-03-05T10:20:30.123456789Z"), dateTime + 1234567890);
    EXPECT_EQ(ParseSvnDate(u"2024-03-05T10:20:30.99999999999999999999Z"), dateTime + 21474836470);
}

TEST(SvnDate, OtherTextsAreNone)
{
    for (const std::u16string_view text :
         {u"", u"2024", u"2024-03-05T10:20:30Z", u"2024-03-05T10:20:30.Z",
          u"2024-03-05T10:20:30.123456", u"2024-03-05 10:20:30.123456Z",
          u"2024-03-05T10:20:30,123456Z", u"-03-05T10:20:30.1Z", u"2024-03-05T10:20:30.1 Z",
          u"\uFF12024-03-05T10:20:30.1\u00b2Z"})
        EXPECT_EQ(ParseSvnDate(text), 0U);
}

TEST(SvnDate, IsFoundInsideText)
{
    for (const std::u16string_view text :
         {u" 2024-03-05T10:20:30.0Z ", u"on 2024-03-05T10:20:30.0Z!", u"2024-03-05t10:20:30.0z",
          u"1-2-2024-03-05T10:20:30.0Z", u"7 2024-03-05T10:20:30.0Z 2025-03-05T10:20:30.0Z",
          u"2024-3-5T10:20:30.0Z", u"02024-003-005T010:020:030.0Z"})
        EXPECT_EQ(ParseSvnDate(text), dateTime);
}

TEST(SvnDate, NoSuchDayIsNone)
{
    for (const std::u16string_view text :
         {u"2024-13-05T10:20:30.1Z", u"2023-04-31T10:20:30.1Z", u"2024-03-05T24:20:30.1Z",
          u"2024-03-05T10:60:30.1Z", u"2024-03-05T10:20:60.1Z", u"1600-03-05T10:20:30.1Z",
          u"0-0-0T0:0:0.0Z", u"99999999999999999999-03-05T10:20:30.1Z"})
        EXPECT_EQ(ParseSvnDate(text), 0U);
}

TEST(SvnDate, IsWhatThePatternSays)
{
    const Pattern pattern(u"([0-9]+)-([0-9]+)-([0-9]+)T([0-9]+)\\:([0-9]+)\\:([0-9]+)\\.([0-9]+)Z");
    const std::u16string whole = u"2024-03-05T10:20:30.1Z";
    for (std::size_t at = 0; at < whole.size(); ++at)
    {
        for (const char16_t unit : {u'0', u'-', u'T', u't', u':', u'.', u'z', u' ', u'@'})
        {
            std::u16string text = whole;
            text[at] = unit;
            Groups groups;
            const bool matches = pattern.Search(text, groups);
            // A changed digit may make it no day, and what breaks the year makes it an early one.
            const bool isDay = matches && unit != u'0' && at > 3;
            EXPECT_TRUE(ParseSvnDate(text) == 0 ? !isDay : matches) << at;
        }
    }
}

TEST(SvnDate, HostileTextIsReadOnce)
{
    std::u16string text;
    for (int i = 0; i < 200000; ++i)
        text += u"1-1-1T1:1:1.1";
    EXPECT_EQ(ParseSvnDate(text), 0U);
    EXPECT_EQ(ParseSvnDate(std::u16string(5'000'000, u'1')), 0U);
}

TEST(SvnNumber, IsReadAsInputIs)
{
    constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max();
    EXPECT_EQ(ParseSvnNumber<std::uint32_t>(u"12"), 12U);
    EXPECT_EQ(ParseSvnNumber<std::uint32_t>(u" \n+12 13"), 12U);
    EXPECT_EQ(ParseSvnNumber<std::uint32_t>(u"12x"), 12U);
    EXPECT_EQ(ParseSvnNumber<std::uint32_t>(u"4294967295"), 4294967295U);
    EXPECT_EQ(ParseSvnNumber<std::uint32_t>(u"4294967296"), 4294967295U);
    EXPECT_EQ(ParseSvnNumber<std::uint32_t>(u"-1"), 4294967295U);
    EXPECT_EQ(ParseSvnNumber<std::uint64_t>(u"8589934592"), 8589934592U);
    EXPECT_EQ(ParseSvnNumber<std::uint64_t>(u"18446744073709551615"), most);
    EXPECT_EQ(ParseSvnNumber<std::uint64_t>(u"99999999999999999999"), most);
}

TEST(SvnNumber, WhatDoesNotReadIsZero)
{
    for (const std::u16string_view text : {u"", u" ", u"x1", u"-", u"+", u"- 1", u"\uFF11"})
        EXPECT_EQ(ParseSvnNumber<std::uint32_t>(text), 0U);
}

TEST(SvnText, IsTrimmedOfWhiteSpaceAtItsEndsOnly)
{
    EXPECT_EQ(TrimmedOfWhiteSpace(u" \t\r\n\v\f\u0085\u00a0\u2003\u2028\u3000a b\n c\u3000 "),
              u"a b\n c");
    EXPECT_EQ(TrimmedOfWhiteSpace(u" \n "), u"");
    EXPECT_EQ(TrimmedOfWhiteSpace(u""), u"");
    EXPECT_EQ(TrimmedOfWhiteSpace(u"\u200ba\ufeff"), u"\u200ba\ufeff") << "those are characters";
}

} // namespace
} // namespace tarnwell::test
