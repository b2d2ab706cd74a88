// Patterns: the grammar's rules that addresses alone don't show.
#include "frame/pattern.h"

#include <gmock/gmock.h>

namespace tarnwell::test
{
namespace
{

using testing::ElementsAre;

bool MatchesWhole(const char16_t* expression, std::u16string_view text)
{
    Groups groups;
    return Pattern(expression).MatchWhole(text, groups);
}

TEST(Patterns, IgnoreTheCaseOfLetters)
{
    EXPECT_TRUE(MatchesWhole(u"@GMT-[a-c]", u"@gmt-B"));
    EXPECT_TRUE(MatchesWhole(u"on", u"ON"));
    Groups groups;
    EXPECT_TRUE(Pattern(u"gmt-(.)").Search(u"at GMT-x", groups));
    EXPECT_THAT(groups, ElementsAre(u"GMT-x", u"x"));
    // Signs that only look like letters, or become one in another case.
    EXPECT_FALSE(MatchesWhole(u"[a-z]", u"\u212A"));
    EXPECT_FALSE(MatchesWhole(u"[a-z]", u"\u0131"));
}

TEST(Patterns, ADotIsAnythingButALineEnd)
{
    EXPECT_TRUE(MatchesWhole(u".", u"\u00e4"));
    EXPECT_FALSE(MatchesWhole(u".", u"\n"));
    EXPECT_FALSE(MatchesWhole(u".", u"\u2029"));
    EXPECT_TRUE(MatchesWhole(u"\\.", u"."));
    EXPECT_FALSE(MatchesWhole(u"\\.", u"x"));
    EXPECT_TRUE(MatchesWhole(u"\\\\.", u"\\x"));
    EXPECT_TRUE(MatchesWhole(u"[.]", u"."));
    EXPECT_FALSE(MatchesWhole(u"[.]", u"n")) << "not what stands for a dot elsewhere";
    EXPECT_FALSE(MatchesWhole(u"[.]", u"^"));
    EXPECT_FALSE(MatchesWhole(u"[0-9].", u"1\n")) << "a dot behind a class is one again";
}

TEST(Patterns, DigitsAreThoseOfAscii)
{
    EXPECT_TRUE(MatchesWhole(u"\\d\\d", u"09"));
    EXPECT_FALSE(MatchesWhole(u"\\d", u"\u0661"));
}

TEST(Patterns, ASearchFindsTheFirstPlace)
{
    const Pattern pattern(u"#([0-9]+)(x)?");
    Groups groups;
    ASSERT_TRUE(pattern.Search(u"\u00e4#12 #3x", groups));
    EXPECT_THAT(groups, ElementsAre(u"#12", u"12", u"")) << "the last took no part";
    EXPECT_FALSE(pattern.MatchWhole(u"#12 ", groups));
    EXPECT_FALSE(pattern.Search(u"12", groups));
    EXPECT_THAT(groups, ElementsAre(u"#12", u"12", u"")) << "left as it was";
}

TEST(Patterns, WhatIsTooComplexDoesNotMatch)
{
    const Pattern pattern(u"(a+)+b");
    const std::u16string text(200, u'a');
    Groups groups;
    EXPECT_FALSE(pattern.MatchWhole(text, groups));
    EXPECT_FALSE(pattern.Search(text + u"c", groups));
    EXPECT_TRUE(pattern.MatchWhole(text + u"b", groups));
}

} // namespace
} // namespace tarnwell::test
