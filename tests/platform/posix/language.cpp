// The user's language and the system's words in it, by the environment.
#include "platform/language.h"
#include "platform/wide.h"
#include "support/environmentvalue.h"

#include <gmock/gmock.h>

#include <string>

namespace tarnwell::test
{

namespace
{

constexpr LANGID english = 2057;
constexpr LANGID japanese = 1041;

// The variables that rule the language are unset, and put back when the test is over.
class Language : public testing::Test
{
protected:
    static std::u16string SystemWords(DWORD code)
    {
        WCHAR* text = nullptr;
        FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_ALLOCATE_BUFFER, nullptr, code,
                       0, reinterpret_cast<WCHAR*>(&text), 0, nullptr);
        std::u16string words(Units(text));
        LocalFree(text);
        return words;
    }

    const EnvironmentValue all{"LC_ALL", nullptr};
    const EnvironmentValue messages{"LC_MESSAGES", nullptr};
    const EnvironmentValue lang{"LANG", nullptr};
    const EnvironmentValue language{"LANGUAGE", nullptr};
};

TEST_F(Language, WithoutAnySettingIsEnglish)
{
    EXPECT_EQ(WantedLanguage(), english);
}

TEST_F(Language, JapaneseInAllItsSpellings)
{
    for (const char* const locale :
         {"ja", "ja_JP", "ja_JP.UTF-8", "ja.UTF-8", "ja_JP.eucJP", "ja@variant"})
    {
        lang.Set(locale);
        EXPECT_EQ(WantedLanguage(), japanese) << locale;
    }
}

TEST_F(Language, AllElseIsEnglish)
{
    for (const char* const locale : {"C", "POSIX", "en_US.UTF-8", "de_DE", "jam_JM", "jax", "JA"})
    {
        lang.Set(locale);
        EXPECT_EQ(WantedLanguage(), english) << locale;
    }
}

TEST_F(Language, TheFirstSettingRules)
{
    lang.Set("ja_JP.UTF-8");
    messages.Set("C");
    EXPECT_EQ(WantedLanguage(), english);
    all.Set("ja_JP.UTF-8");
    EXPECT_EQ(WantedLanguage(), japanese);
}

TEST_F(Language, AnEmptySettingSaysNothing)
{
    all.Set("");
    messages.Set("");
    lang.Set("ja_JP.UTF-8");
    EXPECT_EQ(WantedLanguage(), japanese);
}

TEST_F(Language, SystemTextsAreTheLibrarysOwn)
{
    all.Set("C");
    EXPECT_EQ(SystemWords(ERROR_FILE_NOT_FOUND), u"No such file or directory\r\n");
    EXPECT_EQ(SystemWords(ERROR_ACCESS_DENIED), u"Permission denied\r\n");
    EXPECT_EQ(SystemWords(static_cast<DWORD>(E_NOTIMPL)), u"Function not implemented\r\n");
    EXPECT_EQ(SystemWords(static_cast<DWORD>(E_INVALIDARG)), u"Invalid argument\r\n");
    EXPECT_EQ(SystemWords(static_cast<DWORD>(E_FAIL)), u"Unspecified error\r\n");
}

// The locale is generated for the tests and found through LOCPATH.
TEST_F(Language, SystemTextsSpeakTheEnvironmentsLanguage)
{
    all.Set("ja_JP.UTF-8");
    const locale_t locale = newlocale(LC_MESSAGES_MASK, "", locale_t{});
    if (locale == locale_t{})
        GTEST_SKIP() << "no Japanese locale installed";
    freelocale(locale);
    EXPECT_EQ(SystemWords(ERROR_FILE_NOT_FOUND),
              u"そのようなファイルやディレクトリはありません\r\n");
    EXPECT_EQ(SystemWords(static_cast<DWORD>(E_FAIL)), u"エラーを特定できません\r\n");
}

TEST_F(Language, ALocaleThatIsNotInstalledLeavesEnglishTexts)
{
    all.Set("xx_XX.UTF-8");
    EXPECT_EQ(SystemWords(ERROR_FILE_NOT_FOUND), u"No such file or directory\r\n");
}

} // namespace

} // namespace tarnwell::test
