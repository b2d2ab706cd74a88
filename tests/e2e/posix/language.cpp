// Which language the module speaks: on Windows that is the user's setting.
#include "e2e/hostrun.h"
#include "support/tempfolder.h"

#include <gmock/gmock.h>

namespace tarnwell::test
{

namespace
{

using testing::StartsWith;

using Variables = std::vector<std::pair<std::string, std::string>>;

HostRun RunWith(const Variables& variables, const std::vector<std::u16string>& options)
{
    HostCall call;
    call.environment = variables;
    call.arguments = options;
    call.arguments.insert(call.arguments.end(), {u"stat", u"/missing"});
    return RunHost(call);
}

constexpr const char* english = "Failed to open \"/missing\". ";
constexpr const char* japanese = "\"/missing\" を開けませんでした。 ";

TEST(Language, ByOption)
{
    EXPECT_THAT(RunWith({}, {u"--lang", u"ja"}).errors, StartsWith(japanese));
    EXPECT_THAT(RunWith({}, {u"--lang", u"en"}).errors, StartsWith(english));
    EXPECT_THAT(RunWith({}, {u"--lang=ja"}).errors, StartsWith(japanese));
}

TEST(Language, OptionGoesBeforeTheEnvironment)
{
    const Variables all = {{"LC_ALL", "ja_JP.UTF-8"}};
    EXPECT_THAT(RunWith(all, {u"--lang", u"en"}).errors, StartsWith(english));
    EXPECT_THAT(RunWith({{"LC_ALL", "C.UTF-8"}}, {u"--lang", u"ja"}).errors, StartsWith(japanese));
}

// Also where nothing of the module is needed.
TEST(Language, OfTheProgramsOwnTextsIsTheModules)
{
    EXPECT_THAT(RunHost({u"--lang", u"ja", u"frobnicate"}).errors,
                StartsWith("tarnwell-host: コマンド \"frobnicate\" はありません。\n"));
    HostCall help{{u"help", u"ls"}, {}, {{"LC_ALL", "ja_JP.UTF-8"}}, {}};
    EXPECT_THAT(RunHost(help).output, StartsWith("使い方: tarnwell-host "));
    help.environment = {{"LC_ALL", "fr_FR.UTF-8"}};
    EXPECT_THAT(RunHost(help).output, StartsWith("Usage: tarnwell-host "));
}

TEST(Language, ByTheEnvironment)
{
    EXPECT_THAT(RunWith({{"LC_ALL", "ja_JP.UTF-8"}}, {}).errors, StartsWith(japanese));
    EXPECT_THAT(RunWith({{"LC_MESSAGES", "ja_JP.UTF-8"}}, {}).errors, StartsWith(japanese));
    EXPECT_THAT(RunWith({{"LANG", "ja_JP.UTF-8"}}, {}).errors, StartsWith(japanese));
    EXPECT_THAT(RunWith({}, {}).errors, StartsWith(english));
}

// The character set has to become UTF-8 then, and the language must survive that.
TEST(Language, OfALocaleWithAnotherCharacterSet)
{
    EXPECT_THAT(RunWith({{"LC_ALL", "ja_JP.eucJP"}}, {}).errors, StartsWith(japanese));
    EXPECT_THAT(RunWith({{"LC_ALL", "C"}}, {}).errors, StartsWith(english));
}

} // namespace

} // namespace tarnwell::test
