// What a client gets of a host program that prepares nothing, as seen by one that tells.
#include "e2e/hostrun.h"
#include "e2e/json.h"
#include "support/clients.h"
#include "support/mercurialrepository.h"
#include "support/tempfolder.h"

#include <gmock/gmock.h>

#include <cstdlib>

namespace tarnwell::test
{

namespace
{

using testing::IsSupersetOf;

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
        return LinesOf(RunPrescribed(call).output);
    }

    const TempFolder programs_;
};

TEST_F(ClientSettings, AskForEnglishAndPlainUtf8)
{
    EXPECT_THAT(VariablesIn("ja_JP.eucJP"),
                IsSupersetOf({"LANGUAGE=en", "HGPLAIN=1", "HGPLAINEXCEPT=", "HGENCODING=utf-8",
                              "LC_ALL=C.UTF-8"}));
}

class MercurialSettings : public ClientTest
{
};

// Nor do settings of the user's count.
TEST_F(MercurialSettings, AnAliasOfTheUsersDoesNotCount)
{
    const MercurialRepository repository;
    const TempFolder settings;
    repository.Commit(u"a.txt", "1", "first");
    WriteBytes(settings / u"hgrc", "[alias]\nlog = log --limit 0\n");
    const HostRun run = RunPrescribed({{u"--json", u"log", u"hg:" + (repository / u"a.txt")},
                                       {},
                                       {{"HGRCPATH", Utf8(settings / u"hgrc")}},
                                       {}});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(JsonLinesOf(run.output).size(), 2U);
}

} // namespace

} // namespace tarnwell::test
