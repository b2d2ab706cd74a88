// The lines of the Perforce client that are known by a pattern, matched by hand, against the
// patterns.
#include "perforce/p4values.h"
#include "frame/pattern.h"

#include <gtest/gtest.h>

#include <optional>
#include <random>
#include <string>
#include <vector>

namespace tarnwell::test
{
namespace
{

using Texts = std::vector<std::u16string>;

// By the pattern; nothing if it isn't found.
std::optional<Texts> Searched(const Pattern& pattern, const std::u16string& line)
{
    Groups groups;
    if (!pattern.Search(line, groups))
        return std::nullopt;
    return Texts(groups.begin() + 1, groups.end());
}

std::optional<Texts> RevisionByPattern(const std::u16string& line)
{
    static const Pattern pattern(u"\\.\\.\\. #([0-9]+) change ([0-9]+) (.*) on ([0-9]+)/([0-9]+)/"
                                 u"([0-9]+) ([0-9]+):([0-9]+):([0-9]+) by ([^ ]+)");
    return Searched(pattern, line);
}

std::optional<Texts> RevisionByHand(const std::u16string& line)
{
    const std::optional<P4Revision> found = FindP4Revision(line);
    if (!found)
        return std::nullopt;
    Texts texts{std::u16string(found->id), std::u16string(found->change),
                std::u16string(found->action)};
    texts.insert(texts.end(), std::begin(found->time), std::end(found->time));
    texts.emplace_back(found->author);
    return texts;
}

std::optional<Texts> PathByPattern(const std::u16string& line)
{
    static const Pattern pattern(u".*#[0-9]+ - (.*)");
    return Searched(pattern, line);
}

std::optional<Texts> PathByHand(const std::u16string& line)
{
    const std::optional<std::u16string_view> found = FindP4LocalPath(line);
    if (!found)
        return std::nullopt;
    return Texts{std::u16string(*found)};
}

TEST(P4Values, ARevisionHasTenParts)
{
    EXPECT_EQ(RevisionByHand(u"... #3 change 12 edit on 2009/06/01 12:34:56 by ann@ws (text+ko)"),
              (Texts{u"3", u"12", u"edit", u"2009", u"06", u"01", u"12", u"34", u"56", u"ann@ws"}));
}

TEST(P4Values, AreWhatTheirPatternsFind)
{
    const std::u16string tail = u" on 1/2/3 4:5:6 by x";
    for (const std::u16string& line : std::vector<std::u16string>{
             u"", u"... #1 change 2 add" + tail, u"xx..... #1 change 2 move/delete" + tail + u" y",
             u"... #1 CHANGE 2 add ON 1/2/3 4:5:6 BY x", u"... #1 change 2 two words" + tail,
             u"... #1 change 2 " + tail, u"... #1 change 2" + tail,
             u"... #1 change 2 a" + tail + tail, u"... #1 change 2 a on 1/2/3 4:5:6 by ",
             u"... #1 change 2 a" + tail + u" on 9/9/9", u"... #x ... #1 change 2 a" + tail,
             u"... #1 change x ... #3 change 4 a" + tail, u"... #1 change 2 a\r b" + tail,
             u"... #1 change 2 a\r... #3 change 4 b" + tail, u"... #1 change 2 a" + tail + u"\ry z",
             u"... #1 change 2 \u00e4" + tail + u"\u00e4", u"\t... #1 change 2 a" + tail,
             u"... ... branch from //depot/x#1"})
    {
        EXPECT_EQ(RevisionByHand(line), RevisionByPattern(line));
    }
    for (const std::u16string& line : std::vector<std::u16string>{
             u"", u"//depot/a.txt#3 - C:\\ws\\a.txt", u"#1 - ", u"# - x", u"#1 -x", u"x#12 - y - z",
             u"//a#1 - /ws/b#2 - c", u"a#1\r#2 - x\ry#3 - z", u"a#1 - b\r#2 - c", u"\r\r#1 - a",
             u"//depot/a.txt - file(s) not on client.", u"#1 - #2 - #x - y"})
    {
        EXPECT_EQ(PathByHand(line), PathByPattern(line));
    }
}

// Lines put together at random of what the patterns are made of.
TEST(P4Values, AreWhatTheirPatternsFindInAnyLine)
{
    const Texts pieces = {u"... #",
                          u"1",
                          u"23",
                          u" change ",
                          u" ",
                          u" on ",
                          u"1/2/3",
                          u" 4:5:6",
                          u" by ",
                          u"x",
                          u"/",
                          u":",
                          u"\r",
                          u"#",
                          u" - ",
                          u"...",
                          u"... #1 change 2 edit",
                          u" on 1/2/3 4:5:6 by a",
                          u"\u2028",
                          u"\u00ff"};
    std::mt19937 random(20240305);
    std::uniform_int_distribution<std::size_t> piece(0, pieces.size() - 1);
    std::uniform_int_distribution<int> count(0, 12);
    std::size_t found = 0;
    for (int i = 0; i < 20'000; ++i)
    {
        std::u16string line;
        for (int left = count(random); left > 0; --left)
            line += pieces[piece(random)];
        const std::optional<Texts> revision = RevisionByHand(line);
        ASSERT_EQ(revision, RevisionByPattern(line)) << i;
        ASSERT_EQ(PathByHand(line), PathByPattern(line)) << i;
        found += revision.has_value() ? 1 : 0;
    }
    EXPECT_GT(found, 100U);
}

// What costs the engine seconds, each 64 KB. Slow is what the suite's time limit sees.
TEST(P4Values, LongLinesThatNearlyFitAreReadAtOnce)
{
    constexpr std::size_t length = 65536;
    for (const std::u16string piece : {u"... #1 change 1 ", u"... #1", u" on 1/1/1 1:1:1 by ",
                                       u" on ", u"#1 -", u"#", u"1", u" "})
    {
        std::u16string line;
        while (line.size() < length)
            line += piece;
        for (int i = 0; i < 100; ++i)
        {
            EXPECT_FALSE(FindP4Revision(line));
            EXPECT_FALSE(FindP4Revision(u"... #1 change 1 " + line));
            EXPECT_FALSE(FindP4LocalPath(line));
        }
    }
}

} // namespace
} // namespace tarnwell::test
