// The module's texts against the promised ones, each id in both languages.
#include "platform/texts.h"
#include "support/messagetexts.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <iterator>

namespace tarnwell::test
{

namespace
{

// Empty if there is none.
std::u16string TextOf(unsigned id, LANGID language)
{
    std::u16string text = u"before";
    const BOOL isThere = LoadModuleText(id, language, text);
    EXPECT_EQ(isThere != 0, !text.empty()) << id;
    return text;
}

// The marks' digits, in order.
std::u16string MarksIn(std::u16string_view text)
{
    std::u16string marks;
    for (std::size_t at = text.find(u'%'); at != text.npos; at = text.find(u'%', at + 1))
        marks += text.substr(at + 1, 1);
    std::sort(marks.begin(), marks.end());
    return marks;
}

TEST(MessageTable, EnglishTextsAreThePromisedOnes)
{
    for (const MessageTexts& texts : messageTexts)
        EXPECT_EQ(TextOf(texts.id, english), texts.english) << texts.id;
}

TEST(MessageTable, JapaneseTextsAreThePromisedOnes)
{
    for (const MessageTexts& texts : messageTexts)
        EXPECT_EQ(TextOf(texts.id, japanese), texts.japanese) << texts.id;
}

TEST(MessageTable, OtherLanguagesHaveEnglish)
{
    constexpr LANGID korean = 1042;
    for (const MessageTexts& texts : messageTexts)
        EXPECT_EQ(TextOf(texts.id, korean), texts.english) << texts.id;
}

// A mark whose text the other language drops, or one that nothing fills, shows to users.
TEST(MessageTable, BothLanguagesHaveTheSameInsertionMarks)
{
    for (const MessageTexts& texts : messageTexts)
    {
        EXPECT_FALSE(texts.english.empty()) << texts.id;
        EXPECT_EQ(MarksIn(TextOf(texts.id, english)), MarksIn(TextOf(texts.id, japanese)))
            << texts.id;
    }
    EXPECT_EQ(MarksIn(u"%2 and \"%1\", %2"), u"122");
}

TEST(MessageTable, OtherIdsHaveNoText)
{
    for (const LANGID language : {english, japanese})
    {
        std::size_t count = 0;
        for (unsigned id = 0; id < 1024; ++id)
            count += TextOf(id, language).empty() ? 0 : 1;
        EXPECT_EQ(count, std::size(messageTexts)) << language;
    }
}

} // namespace

} // namespace tarnwell::test
