// Which of its languages the module speaks to whom.
#include "platform/texts.h"
#include "support/messagetexts.h"

#include <gmock/gmock.h>

namespace tarnwell::test
{

namespace
{

TEST(MessageLanguage, JapaneseUsersGetJapanese)
{
    EXPECT_EQ(ChooseLanguage(japanese), japanese);
}

TEST(MessageLanguage, TheSamePrimaryLanguageIsGoodEnough)
{
    constexpr LANGID otherJapanese = japanese & 0x3FF;
    EXPECT_EQ(ChooseLanguage(otherJapanese), japanese);
}

TEST(MessageLanguage, EnglishUsersOfAllRegionsGetEnglish)
{
    for (const LANGID wanted : {LANGID{2057}, LANGID{1033}, LANGID{3081}})
        EXPECT_EQ(ChooseLanguage(wanted), english) << wanted;
}

TEST(MessageLanguage, AllOthersGetEnglish)
{
    for (const LANGID wanted : {LANGID{1042}, LANGID{1031}, LANGID{0}})
        EXPECT_EQ(ChooseLanguage(wanted), english) << wanted;
}

} // namespace

} // namespace tarnwell::test
