// Reading the output of clients by lines and whole.
#include "runner/bufferedreader.h"
#include "support/opened.h"

#include <gtest/gtest.h>

namespace tarnwell::test
{
namespace
{

class Reading : public testing::Test
{
protected:
    HANDLE Containing(std::string_view bytes)
    {
        file_.Close(); // an open file isn't written everywhere
        file_ = OpenedWith(folder_, bytes);
        return file_.Get();
    }

    const TempFolder folder_;
    OsHandle file_;
    std::u16string line_;
};

TEST_F(Reading, LinesEndAtLineFeeds)
{
    BufferedReader reader(Containing("one\ntwo\r\nlast"), Decoding::Utf8);
    EXPECT_TRUE(reader.ReadLine(line_));
    EXPECT_EQ(line_, u"one");
    EXPECT_TRUE(reader.ReadLine(line_));
    EXPECT_EQ(line_, u"two");
    EXPECT_TRUE(reader.ReadLine(line_));
    EXPECT_EQ(line_, u"last");
    EXPECT_FALSE(reader.ReadLine(line_));
    EXPECT_EQ(line_, u"");
}

TEST_F(Reading, AnEmptyLineAnswersLikeTheEnd)
{
    BufferedReader reader(Containing("one\n\ntwo\n"), Decoding::Utf8);
    EXPECT_TRUE(reader.ReadLine(line_));
    EXPECT_FALSE(reader.ReadLine(line_));
    EXPECT_EQ(line_, u"");
    EXPECT_TRUE(reader.ReadLine(line_));
    EXPECT_EQ(line_, u"two");
}

TEST_F(Reading, AnEmptyLineMayBeALine)
{
    BufferedReader reader(Containing("\none\n\r\n\nlast"), Decoding::Utf8, BareLineFeed::IsALine);
    for (const char16_t* const expected : {u"", u"one", u"", u"", u"last"})
    {
        EXPECT_TRUE(reader.ReadLine(line_));
        EXPECT_EQ(line_, expected);
    }
    EXPECT_FALSE(reader.ReadLine(line_));
    EXPECT_EQ(line_, u"");
    BufferedReader ended(Containing("one\n"), Decoding::Utf8, BareLineFeed::IsALine);
    EXPECT_TRUE(ended.ReadLine(line_));
    EXPECT_FALSE(ended.ReadLine(line_)) << "a line feed ends a line and begins none";
}

TEST_F(Reading, AnEmptyLineMayLieAtTheEdgeOfABlock)
{
    BufferedReader reader(Containing(std::string(10239, 'x') + "\n\ny"), Decoding::Widen,
                          BareLineFeed::IsALine);
    for (const std::u16string& expected : {std::u16string(10239, u'x'), std::u16string(), {u"y"}})
    {
        EXPECT_TRUE(reader.ReadLine(line_));
        EXPECT_EQ(line_, expected);
    }
}

TEST_F(Reading, ACarriageReturnAloneIsALineWithNothingInIt)
{
    BufferedReader reader(Containing("\r\na\rb\n"), Decoding::Utf8);
    EXPECT_TRUE(reader.ReadLine(line_));
    EXPECT_EQ(line_, u"");
    EXPECT_TRUE(reader.ReadLine(line_));
    EXPECT_EQ(line_, u"a\rb");
}

TEST_F(Reading, CharactersMayLieAcrossBlocks)
{
    const std::string before(10239, 'x');
    BufferedReader reader(Containing(before + "\xC3\xA4\n"), Decoding::Utf8);
    EXPECT_TRUE(reader.ReadLine(line_));
    EXPECT_EQ(line_, std::u16string(10239, u'x') + u"\u00e4");
    EXPECT_EQ(BufferedReader(Containing(before + "\xC3\xA4\n"), Decoding::Utf8).ReadAll(),
              std::u16string(10239, u'x') + u"\u00e4\n");
}

TEST_F(Reading, LinesAreLongerThanBlocks)
{
    BufferedReader reader(Containing(std::string(100000, 'x') + "\ny\n"), Decoding::Widen);
    EXPECT_TRUE(reader.ReadLine(line_));
    EXPECT_EQ(line_.size(), 100000U);
    EXPECT_TRUE(reader.ReadLine(line_));
    EXPECT_EQ(line_, u"y");
}

TEST_F(Reading, WideningKeepsEachByte)
{
    BufferedReader reader(Containing("\xC3\xA4\n"), Decoding::Widen);
    EXPECT_TRUE(reader.ReadLine(line_));
    EXPECT_EQ(line_, u"\u00c3\u00a4");
}

TEST_F(Reading, TheWholeKeepsItsLineEnds)
{
    EXPECT_EQ(BufferedReader(Containing("a\r\n\nb"), Decoding::Utf8).ReadAll(), u"a\r\n\nb");
    EXPECT_EQ(BufferedReader(Containing(""), Decoding::Utf8).ReadAll(), u"");
}

TEST_F(Reading, AnErrorLooksLikeTheEnd)
{
    BufferedReader reader(INVALID_HANDLE_VALUE, Decoding::Utf8);
    EXPECT_FALSE(reader.ReadLine(line_));
    EXPECT_EQ(reader.ReadAll(), u"");
    BufferedReader lines(INVALID_HANDLE_VALUE, Decoding::Utf8, BareLineFeed::IsALine);
    EXPECT_FALSE(lines.ReadLine(line_));
}

TEST_F(Reading, WhatIsSkippedIsGone)
{
    BufferedReader reader(Containing("one\n" + std::string(100000, 'x')), Decoding::Utf8);
    EXPECT_TRUE(reader.ReadLine(line_));
    reader.SkipAll();
    EXPECT_EQ(reader.ReadAll(), u"");
}

} // namespace
} // namespace tarnwell::test
