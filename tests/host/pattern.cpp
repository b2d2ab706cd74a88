// Patterns of names.
#include "pattern.h"

#include <gtest/gtest.h>

#include <string>

namespace tarnwell::host
{
namespace
{

TEST(Pattern, MatchesWholeNames)
{
    EXPECT_TRUE(MatchesName(u"a.txt", u"a.txt"));
    EXPECT_FALSE(MatchesName(u"a.txt", u"a.txt2"));
    EXPECT_FALSE(MatchesName(u"a.txt2", u"a.txt"));
    EXPECT_FALSE(MatchesName(u"A.txt", u"a.txt"));
    EXPECT_FALSE(MatchesName(u"", u"a"));
    EXPECT_TRUE(MatchesName(u"", u""));
}

TEST(Pattern, AStarTakesAsMuchAsIsNeeded)
{
    EXPECT_TRUE(MatchesName(u"*", u""));
    EXPECT_TRUE(MatchesName(u"*.txt", u"a.txt.txt"));
    EXPECT_TRUE(MatchesName(u"a*b*c", u"abbbcbc"));
    EXPECT_FALSE(MatchesName(u"a*b*c", u"abbbcb"));
    EXPECT_TRUE(MatchesName(u"a**", u"a"));
    EXPECT_FALSE(MatchesName(u"*a", u"b"));
}

TEST(Pattern, AQuestionMarkTakesOneCharacter)
{
    EXPECT_TRUE(MatchesName(u"?.c", u"a.c"));
    EXPECT_FALSE(MatchesName(u"?.c", u".c"));
    EXPECT_TRUE(MatchesName(u"?", u"\U0001F600"));
    EXPECT_FALSE(MatchesName(u"??", u"\U0001F600"));
    const char16_t half[] = {0xDCFF, 0};
    EXPECT_TRUE(MatchesName(u"?", half)) << "a byte that is no text";
    EXPECT_TRUE(MatchesName(u"*?", u"a\U0001F600"));
}

TEST(Pattern, OtherSignsStandForThemselves)
{
    EXPECT_TRUE(MatchesName(u"[a].c", u"[a].c"));
    EXPECT_FALSE(MatchesName(u"[a].c", u"a.c"));
    EXPECT_TRUE(MatchesName(u"\\", u"\\"));
}

// With a way back for each star this would never end.
TEST(Pattern, ManyStarsTakeNoLonger)
{
    std::u16string pattern;
    for (int i = 0; i < 100; ++i)
        pattern += u"*a";
    EXPECT_FALSE(MatchesName(pattern + u"b", std::u16string(2000, u'a')));
}

} // namespace
} // namespace tarnwell::host
