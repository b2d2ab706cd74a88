// The user's language and the system's words in it, by the environment.
#include "platform/posix/messages/systemtext.h"
#include "platform/posix/systemcalls.h"
#include "platform/texts.h"
#include "support/environmentvalue.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <csignal>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

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
        std::u16string words;
        FindSystemText(code, words);
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
    EXPECT_EQ(SystemWords(ERROR_FILE_NOT_FOUND), u"No such file or directory");
    EXPECT_EQ(SystemWords(ERROR_ACCESS_DENIED), u"Permission denied");
    EXPECT_EQ(SystemWords(static_cast<DWORD>(E_NOTIMPL)), u"Function not implemented");
    EXPECT_EQ(SystemWords(static_cast<DWORD>(E_INVALIDARG)), u"Invalid argument");
    EXPECT_EQ(SystemWords(static_cast<DWORD>(E_FAIL)), u"Unspecified error");
}

// The locale is generated for the tests and found through LOCPATH.
TEST_F(Language, SystemTextsSpeakTheEnvironmentsLanguage)
{
    all.Set("ja_JP.UTF-8");
    const locale_t locale = newlocale(LC_MESSAGES_MASK, "", locale_t{});
    if (locale == locale_t{})
        GTEST_SKIP() << "no Japanese locale installed";
    freelocale(locale);
    EXPECT_EQ(SystemWords(ERROR_FILE_NOT_FOUND), u"そのようなファイルやディレクトリはありません");
    EXPECT_EQ(SystemWords(static_cast<DWORD>(E_FAIL)), u"エラーを特定できません");
}

TEST_F(Language, SignalsAreNamedInTheEnvironmentsLanguage)
{
    EXPECT_EQ(posix::SignalText(SIGKILL), u"Killed");
    EXPECT_EQ(posix::SignalText(0), u"") << "is none";
    all.Set("ja_JP.UTF-8");
    const locale_t locale = newlocale(LC_MESSAGES_MASK, "", locale_t{});
    if (locale == locale_t{})
        GTEST_SKIP() << "no Japanese locale installed";
    freelocale(locale);
    const locale_t before = uselocale(locale_t{});
    EXPECT_EQ(posix::SignalText(SIGKILL), u"強制終了");
    EXPECT_EQ(uselocale(locale_t{}), before) << "the thread's own is as it was";
    all.Set("zz_ZZ.UTF-8");
    SystemCalls calls;
    calls.Fail("newlocale", 1, ENOMEM);
    EXPECT_EQ(posix::SignalText(SIGKILL), u"Killed") << "without memory for a locale";
}

// As many files are open as may be.
class NoDescriptors
{
public:
    NoDescriptors()
    {
        getrlimit(RLIMIT_NOFILE, &before_);
        const rlimit none{3, before_.rlim_max};
        setrlimit(RLIMIT_NOFILE, &none);
    }
    NoDescriptors(const NoDescriptors&) = delete;
    NoDescriptors& operator=(const NoDescriptors&) = delete;
    ~NoDescriptors()
    {
        setrlimit(RLIMIT_NOFILE, &before_);
    }

private:
    rlimit before_ = {};
};

TEST_F(Language, WithoutDescriptorsTheCauseIsStillTold)
{
    all.Set("xx_YY.UTF-8");
    const NoDescriptors none;
    EXPECT_EQ(SystemWords(ERROR_TOO_MANY_OPEN_FILES), u"Too many open files");
}

// Run by the next one, in a process of its own.
class DISABLED_LanguageAlone : public Language
{
};

TEST_F(DISABLED_LanguageAlone, HasItsTextsBeforeDescriptorsRunOut)
{
    all.Set("ja_JP.UTF-8");
    const NoDescriptors none;
    EXPECT_EQ(SystemWords(ERROR_TOO_MANY_OPEN_FILES), u"ファイルを開きすぎです");
}

TEST_F(Language, TextsAreThereBeforeDescriptorsRunOut)
{
    const locale_t locale = newlocale(LC_MESSAGES_MASK, "ja_JP.UTF-8", locale_t{});
    if (locale == locale_t{})
        GTEST_SKIP() << "no Japanese locale installed";
    freelocale(locale);
    all.Set("ja_JP.UTF-8");
    const pid_t child = fork();
    if (child == 0)
    {
        execl("/proc/self/exe", "platform-tests", "--gtest_also_run_disabled_tests",
              "--gtest_filter=DISABLED_LanguageAlone.*", nullptr);
        _exit(99);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
}

TEST_F(Language, WithoutMemoryForALocaleTheWordsAreThoseAtHand)
{
    all.Set("yy_YY.UTF-8");
    SystemCalls calls;
    calls.Fail("newlocale", 1, ENOMEM);
    EXPECT_EQ(SystemWords(ERROR_FILE_NOT_FOUND), u"No such file or directory");
}

TEST_F(Language, ALocaleThatIsNotInstalledLeavesEnglishTexts)
{
    all.Set("xx_XX.UTF-8");
    EXPECT_EQ(SystemWords(ERROR_FILE_NOT_FOUND), u"No such file or directory");
}

} // namespace

} // namespace tarnwell::test
