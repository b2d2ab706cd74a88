// The module speaks the language of the user. A program can't change it for itself: the runner of
// the tests does, and runs these once more.
#include "frame/messages.h"
#include "platform/texts.h"

#include <gtest/gtest.h>

namespace tarnwell::test
{

namespace
{

constexpr LANGID japanese = 1041;

TEST(UserLanguage, IsTheOneOfTheUserInterface)
{
    EXPECT_EQ(WantedLanguage(), GetUserDefaultUILanguage());
}

TEST(UserLanguage, OfJapaneseUsersIsJapanese)
{
    if (GetUserDefaultUILanguage() != japanese)
        GTEST_SKIP() << "this user reads another language";
    EXPECT_EQ(FormatMessageById(MessageId::NullPointer), u"内部エラー (ヌル ポインタ引数)。");
    EXPECT_EQ(FormatMessageById(MessageId::CopyFailed, {u"a", u"b"}),
              u"\"a\" を \"b\" へコピーできませんでした。");
}

} // namespace

} // namespace tarnwell::test
