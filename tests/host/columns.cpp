// Text in columns and lines.
#include "columns.h"

#include <gtest/gtest.h>

namespace tarnwell::host
{
namespace
{

TEST(Columns, OfWideCombiningAndBrokenText)
{
    EXPECT_EQ(ColumnsOf(u""), 0U);
    EXPECT_EQ(ColumnsOf(u"abc"), 3U);
    EXPECT_EQ(ColumnsOf(u"日本語"), 6U);
    EXPECT_EQ(ColumnsOf(u"e\u0301"), 1U);
    EXPECT_EQ(ColumnsOf(u"\U0001F600"), 2U);
    const char16_t halves[] = {0xD83D, u'a', 0xDE00, 0};
    EXPECT_EQ(ColumnsOf(halves), 3U);
}

TEST(Columns, AlignedByThem)
{
    EXPECT_EQ(LeftAligned(u"名前", 6) + u"|", u"名前  |");
    EXPECT_EQ(RightAligned(u"名前", 6), u"  名前");
    EXPECT_EQ(LeftAligned(u"long", 2), u"long");
}

TEST(Wrapping, BreaksAtBlanks)
{
    EXPECT_EQ(Wrapped(u"one two three", 8, 0), u"one two\nthree");
    EXPECT_EQ(Wrapped(u"one two three", 7, 0), u"one two\nthree");
    EXPECT_EQ(Wrapped(u"one two three", 6, 0), u"one\ntwo\nthree");
    EXPECT_EQ(Wrapped(u"one  two", 20, 0), u"one  two") << "blanks inside of a line stay";
    EXPECT_EQ(Wrapped(u"", 5, 2), u"");
}

TEST(Wrapping, IndentsAllButTheFirstLine)
{
    EXPECT_EQ(Wrapped(u"one two", 6, 2), u"one\n  two");
}

TEST(Wrapping, LeavesLongWordsWhole)
{
    EXPECT_EQ(Wrapped(u"svn://host/repository/trunk a", 10, 0), u"svn://host/repository/trunk\na");
    EXPECT_EQ(Wrapped(u"abc", 2, 4), u"abc") << "also where the indent takes all the width";
}

TEST(Wrapping, BreaksBetweenWideCharactersButNotBeforeAStop)
{
    EXPECT_EQ(Wrapped(u"日本語です。", 6, 0), u"日本語\nです。");
    EXPECT_EQ(Wrapped(u"日本語。", 6, 0), u"日本\n語。");
    EXPECT_EQ(Wrapped(u"日本語)", 6, 0), u"日本\n語)");
}

} // namespace
} // namespace tarnwell::host
