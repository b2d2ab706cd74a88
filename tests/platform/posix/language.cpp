// The user's language and the system's words in it, by the environment.
#include "platform/language.h"
#include "platform/wide.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <optional>
#include <string>

namespace tarnwell::test
{

namespace
{

constexpr LANGID english = 2057;
constexpr LANGID japanese = 1041;

// Puts the variables that rule the language back when the test is over.
class Language : public testing::Test
{
protected:
    Language()
    {
        for (Saved& variable : saved_)
        {
            if (const char* const value = std::getenv(variable.name))
                variable.value = value;
            unsetenv(variable.name);
        }
    }

    ~Language() override
    {
        for (const Saved& variable : saved_)
        {
            if (variable.value)
                setenv(variable.name, variable.value->c_str(), 1);
            else
                unsetenv(variable.name);
        }
    }

    static void Set(const char* name, const char* value)
    {
        setenv(name, value, 1);
    }

    static std::u16string SystemWords(DWORD code)
    {
        WCHAR* text = nullptr;
        FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_ALLOCATE_BUFFER, nullptr, code,
                       0, reinterpret_cast<WCHAR*>(&text), 0, nullptr);
        std::u16string words(Units(text));
        LocalFree(text);
        return words;
    }

private:
    struct Saved
    {
        const char* name;
        std::optional<std::string> value = std::nullopt;
    };
    Saved saved_[4] = {{"LC_ALL"}, {"LC_MESSAGES"}, {"LANG"}, {"LANGUAGE"}};
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
        Set("LANG", locale);
        EXPECT_EQ(WantedLanguage(), japanese) << locale;
    }
}

TEST_F(Language, AllElseIsEnglish)
{
    for (const char* const locale : {"C", "POSIX", "en_US.UTF-8", "de_DE", "jam_JM", "jax", "JA"})
    {
        Set("LANG", locale);
        EXPECT_EQ(WantedLanguage(), english) << locale;
    }
}

TEST_F(Language, TheFirstSettingRules)
{
    Set("LANG", "ja_JP.UTF-8");
    Set("LC_MESSAGES", "C");
    EXPECT_EQ(WantedLanguage(), english);
    Set("LC_ALL", "ja_JP.UTF-8");
    EXPECT_EQ(WantedLanguage(), japanese);
}

TEST_F(Language, AnEmptySettingSaysNothing)
{
    Set("LC_ALL", "");
    Set("LC_MESSAGES", "");
    Set("LANG", "ja_JP.UTF-8");
    EXPECT_EQ(WantedLanguage(), japanese);
}

TEST_F(Language, SystemTextsAreTheLibrarysOwn)
{
    Set("LC_ALL", "C");
    EXPECT_EQ(SystemWords(ERROR_FILE_NOT_FOUND), u"No such file or directory\r\n");
    EXPECT_EQ(SystemWords(ERROR_ACCESS_DENIED), u"Permission denied\r\n");
    EXPECT_EQ(SystemWords(static_cast<DWORD>(E_NOTIMPL)), u"Function not implemented\r\n");
    EXPECT_EQ(SystemWords(static_cast<DWORD>(E_INVALIDARG)), u"Invalid argument\r\n");
    EXPECT_EQ(SystemWords(static_cast<DWORD>(E_FAIL)), u"Unspecified error\r\n");
}

// The locale is generated for the tests and found through LOCPATH.
TEST_F(Language, SystemTextsSpeakTheEnvironmentsLanguage)
{
    Set("LC_ALL", "ja_JP.UTF-8");
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
    Set("LC_ALL", "xx_XX.UTF-8");
    EXPECT_EQ(SystemWords(ERROR_FILE_NOT_FOUND), u"No such file or directory\r\n");
}

} // namespace

} // namespace tarnwell::test
