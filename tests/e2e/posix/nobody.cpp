// The program where something that it takes for granted is missing.
#include "e2e/hostrun.h"
#include "support/tempfolder.h"

#include <gmock/gmock.h>

namespace tarnwell::test
{

namespace
{

using testing::HasSubstr;
using testing::StartsWith;

namespace fs = std::filesystem;

// In a session of its own, so without the terminal that the tests may have.
HostRun RunAlone(std::vector<std::u16string> arguments)
{
    arguments.insert(arguments.begin(), {u"--wait", HostProgram().u16string()});
    return RunProcess("setsid", {.arguments = arguments,
                                 .environment = {{"DISPLAY", ""}, {"WAYLAND_DISPLAY", ""}}});
}

TEST(NobodyToAsk, IsAFailureThatNamesWhatWasNotDone)
{
    const TempFolder folder;
    WriteBytes(folder / u"a", "");
    WriteBytes(folder / u"b", "");
    const std::string a = Utf8(folder / u"a");
    const std::string b = Utf8(folder / u"b");
    const std::string why = "Not deleted, as there is nobody to ask (--yes deletes without a "
                            "question):\n  ";
    const HostRun list = RunAlone({u"rm", folder / u"a", folder / u"b"});
    EXPECT_EQ(list.exitCode, 1);
    EXPECT_EQ(list.errors, why + a + "\n  " + b + "\n0x800704C7\n");
    const HostRun one = RunAlone({u"rm", folder / u"a"});
    EXPECT_EQ(one.exitCode, 1);
    EXPECT_EQ(one.errors, why + a + "\n0x800704C7\n");
    EXPECT_TRUE(fs::exists(folder / u"a"));
    EXPECT_TRUE(fs::exists(folder / u"b"));
    EXPECT_EQ(RunAlone({u"--yes", u"rm", folder / u"a"}).exitCode, 0);
}

TEST(NoWorkingFolder, IsAFailureWithWords)
{
    const HostRun run = RunProcess(
        "sh", {.arguments = {u"-c",
                             u"d=$(mktemp -d) && cd \"$d\" && rmdir \"$d\" && exec \"$0\" "
                             u"cat git:a",
                             HostProgram().u16string()}});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.errors, HasSubstr("No such file or directory"));
    EXPECT_THAT(run.errors, testing::EndsWith("\n0x80004005\n"));
}

// The current folder may be somebody else's repository.
TEST(Selfcheck, RunsNothingInTheCurrentFolder)
{
    const TempFolder folder;
    WriteBytes(folder / u"git", "#!/bin/sh\ntouch ran\necho git version 0\n");
    fs::permissions(folder.Path() / "git", fs::perms::owner_all);
    for (const char* const path : {":", ".", "./"})
    {
        const HostRun run = RunHost({.arguments = {u"selfcheck"},
                                     .environment = {{"PATH", path}},
                                     .folder = folder.Path()});
        EXPECT_THAT(run.output, HasSubstr("git               not found\n"));
        EXPECT_FALSE(fs::exists(folder / u"ran")) << path;
    }
}

} // namespace

} // namespace tarnwell::test
