// The module speaks the language of the user's system.
#include "platform/language.h"
#include "frame/messages.h"
#include "support/wine.h"

#include <gtest/gtest.h>

namespace tarnwell::test
{

namespace
{

constexpr LANGID japanese = 1041;
constexpr LANGID korean = 1042;
constexpr LANGID american = 1033;

using SetLanguageFunction = LONG(NTAPI*)(LANGID);

// What Wine counts as the language of this process, and nobody else, until it is set again.
void SetLanguage(LANGID language)
{
    const auto set = reinterpret_cast<SetLanguageFunction>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtSetDefaultUILanguage")));
    ASSERT_NE(set, nullptr);
    EXPECT_EQ(set(language), 0);
}

class Language : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!IsUnderWine())
            GTEST_SKIP() << "elsewhere the language is the whole account's, which stays as it is";
    }
    ~Language() override
    {
        if (IsUnderWine())
            SetLanguage(before_);
    }

private:
    LANGID before_ = GetUserDefaultUILanguage();
};

TEST_F(Language, OfJapaneseUsersIsJapanese)
{
    SetLanguage(japanese);
    EXPECT_EQ(WantedLanguage(), japanese);
    EXPECT_EQ(FormatMessageById(MessageId::NullPointer), u"内部エラー (ヌル ポインタ引数)。");
    EXPECT_EQ(FormatMessageById(MessageId::CopyFailed, {u"a", u"b"}),
              u"\"a\" を \"b\" へコピーできませんでした。");
}

TEST_F(Language, OfAllOthersIsEnglish)
{
    for (const LANGID language : {american, korean})
    {
        SetLanguage(language);
        EXPECT_EQ(WantedLanguage(), language);
        EXPECT_EQ(FormatMessageById(MessageId::NullPointer),
                  u"Internal error (null pointer argument).");
    }
}

TEST_F(Language, IsAskedForAtEachMessage)
{
    SetLanguage(american);
    const std::u16string english = FormatMessageById(MessageId::NullPointer);
    SetLanguage(japanese);
    EXPECT_NE(FormatMessageById(MessageId::NullPointer), english);
    SetLanguage(american);
    EXPECT_EQ(FormatMessageById(MessageId::NullPointer), english);
}

} // namespace

} // namespace tarnwell::test
