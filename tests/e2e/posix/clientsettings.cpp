// What the host program sets for its clients, as seen by one that tells.
#include "e2e/hostrun.h"
#include "support/tempfolder.h"

#include <gmock/gmock.h>

#include <cstdlib>

namespace tarnwell::test
{

namespace
{

using testing::Contains;
using testing::IsSupersetOf;
using testing::Not;
using testing::StartsWith;

namespace fs = std::filesystem;

class ClientSettings : public testing::Test
{
protected:
    ClientSettings()
    {
        WriteBytes(programs_ / u"hg", "#!/bin/sh\nenv\n");
        fs::permissions(programs_.Path() / "hg", fs::perms::owner_all);
    }

    // The variables of a client where all locale categories are set to this.
    std::vector<std::string> VariablesIn(const char* locale) const
    {
        HostCall call{.arguments = {u"cat", u"hg:/r/a.txt"}};
        call.environment = {{"PATH", programs_.Path().string() + ":" + std::getenv("PATH")},
                            {"LC_ALL", locale},
                            {"HGPLAIN", ""},
                            {"HGENCODING", "latin1"},
                            {"LANGUAGE", "ja"}};
        return LinesOf(RunHost(call).output);
    }

    const TempFolder programs_;
};

TEST_F(ClientSettings, AskForEnglishAndPlainUtf8)
{
    EXPECT_THAT(VariablesIn("C.UTF-8"),
                IsSupersetOf({"LANGUAGE=en", "HGPLAIN=1", "HGENCODING=utf-8", "LC_ALL=C.UTF-8"}));
}

TEST_F(ClientSettings, ChangeALocaleWithAnotherCharacterSet)
{
    for (const std::string locale : {"C", "ja_JP.eucJP", "no such"})
    {
        const std::vector<std::string> variables = VariablesIn(locale.c_str());
        EXPECT_THAT(variables,
                    IsSupersetOf({std::string("LC_CTYPE=C.UTF-8"), "LC_MESSAGES=" + locale}));
        EXPECT_THAT(variables, Not(Contains(StartsWith("LC_ALL="))));
    }
}

} // namespace

} // namespace tarnwell::test
