// The module's texts against the promised ones, each id in both languages.
#include "support/messagetexts.h"
#include "support/stringtable.h"

#include "platform/modulehandle.h"

#include <gmock/gmock.h>

#include <iterator>

namespace tarnwell::test
{

namespace
{

TEST(MessageTable, EnglishTextsAreThePromisedOnes)
{
    for (const MessageTexts& texts : messageTexts)
        EXPECT_EQ(ReadText(ThisModule(), texts.id, english), texts.english) << texts.id;
}

TEST(MessageTable, JapaneseTextsAreThePromisedOnes)
{
    for (const MessageTexts& texts : messageTexts)
        EXPECT_EQ(ReadText(ThisModule(), texts.id, japanese), texts.japanese) << texts.id;
}

TEST(MessageTable, OtherIdsHaveNoText)
{
    for (const LANGID language : {english, japanese})
    {
        std::size_t count = 0;
        for (WORD name = 1; name <= 64; ++name)
        {
            for (const auto& text :
                 ReadBlock(ThisModule(), name, language).value_or(std::vector<std::u16string>()))
                count += text.empty() ? 0 : 1;
        }
        EXPECT_EQ(count, std::size(messageTexts)) << language;
    }
}

} // namespace

} // namespace tarnwell::test
