// What becomes of files in Git where the client or the repository is out of the ordinary. Clients
// that can't be had from the real one are scripts, first on the PATH.
#include "module/systemtest.h"
#include "support/clients.h"
#include "support/environmentvalue.h"
#include "support/posix/child.h"
#include "support/posix/ownmounts.h"
#include "support/repository.h"

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;

constexpr std::u16string_view reportedIn = u" [gitobjects@";

// Failed with this message and no text of the system's.
MATCHER_P(Reported, message, "")
{
    return arg.status == E_FAIL && arg.error &&
           arg.error->text.starts_with(std::u16string(message) + std::u16string(reportedIn));
}

class GitRuns : public SystemTest
{
protected:
    GitRuns() : SystemTest(CLSID_GITFileSystem, WhyNoClients()) {}
    ~GitRuns() override
    {
        EXPECT_TRUE(fs::is_empty(temporary_.Path()));
    }

    std::u16string Address(std::u16string_view name) const
    {
        return u"git://" + (repository_ / name);
    }

    // From now on the client is this script.
    void ReplaceClient(const std::string& script) const
    {
        WriteBytes(programs_ / u"git", "#!/bin/sh\n" + script);
        fs::permissions(programs_.Path() / "git", fs::perms::owner_all);
        path_.Set((programs_.Path().string() + ":" + getenv("PATH")).c_str());
    }

    const Repository repository_;

private:
    const TempFolder programs_;
    const TempFolder home_;
    const TempFolder temporary_;

protected:
    const EnvironmentValue path_{"PATH", getenv("PATH")};

private:
    const EnvironmentValue homeVariable_{"HOME", home_.Path().c_str()};
    const EnvironmentValue temporaryVariable_{"TMPDIR", temporary_.Path().c_str()};
};

// ---- Clients ----

TEST_F(GitRuns, AWarningOfARunThatSucceedsIsAFailure)
{
    ReplaceClient("echo content\necho '  a warning ' >&2\n");
    EXPECT_THAT(FailedOpen(Address(u"a.txt")), Reported(u"An error occurred while accessing \"" +
                                                        Address(u"a.txt") + u"\"\n\na warning"));
    EXPECT_FALSE(HasRevisions(Address(u"a.txt")));
}

TEST_F(GitRuns, AFailureWithoutWordsIsEmptyContent)
{
    ReplaceClient("exit 1\n");
    EXPECT_EQ(Content(Address(u"a.txt")), "");
    EXPECT_TRUE(Revisions(Address(u"a.txt")).empty());
}

TEST_F(GitRuns, WhatEndedTheClientIsNamedInTheUsersLanguage)
{
    ReplaceClient("kill -9 $$\n");
    const EnvironmentValue japanese("LC_ALL", "ja_JP.UTF-8");
    const Outcome outcome = FailedOpen(Address(u"a.txt"));
    ASSERT_TRUE(outcome.error);
    EXPECT_TRUE(outcome.error->text.starts_with(
        u"Git と通信中にエラーが発生しました。 強制終了 [gitobjects@"))
        << testing::PrintToString(outcome.error->text);
}

TEST_F(GitRuns, WhatTheClientLeavesRunningSpeaksToo)
{
    ReplaceClient("echo content\n(sleep 2; echo late words >&2) &\n");
    EXPECT_THAT(FailedOpen(Address(u"a.txt")), Reported(u"An error occurred while accessing \"" +
                                                        Address(u"a.txt") + u"\"\n\nlate words"));
}

TEST_F(GitRuns, ReportsAreInTheUsersLanguage)
{
    ReplaceClient("echo words >&2\n");
    const EnvironmentValue japanese("LC_ALL", "ja_JP.UTF-8");
    EXPECT_THAT(
        FailedOpen(Address(u"a.txt")),
        Reported(u"\"" + Address(u"a.txt") + u"\"\n\nwords にアクセス中にエラーが発生しました。"));
}

// ---- Repositories ----

TEST_F(GitRuns, AnothersRepositoryIsReportedAndListsNothing)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only root can give files away";
    repository_.Commit(u"a.txt", "bytes", "first");
    constexpr uid_t nobody = 65534;
    for (const fs::path& folder :
         {repository_.Folder().Path(), repository_.Folder().Path() / ".git"})
        ASSERT_EQ(chown(folder.c_str(), nobody, nobody), 0);
    EXPECT_THAT(FailedOpen(Address(u"a.txt")),
                FailedSomehow(u"An error occurred while accessing \"" + Address(u"a.txt") +
                              u"\"\n\nfatal: detected dubious ownership in repository"));
    EXPECT_TRUE(Revisions(Address(u"a.txt")).empty());
    EXPECT_FALSE(HasRevisions(Address(u"a.txt")));
}

// The mount is that of the root itself, above which there is nothing to look for.
TEST_F(GitRuns, ARepositoryMayBeTheRootOfAMount)
{
    constexpr int notPermitted = 77;
    const TempFolder root;
    const auto act = [&] {
        if (!HaveOwnMounts() || !MakeRoot(root.Path().c_str()))
            return notPermitted;
        fs::create_directory("/folder of its own");
        WriteBytes(u"/a.txt", "one");
        WriteBytes(u"/folder of its own/b.txt", "two");
        RunClient("git", {"init", "-q"}, "/");
        RunClient("git", {"add", "a.txt", "folder of its own/b.txt"}, "/");
        RunClient("git", Words("-c user.name=Ann -c user.email=a@example.org commit -q -m first"),
                  "/");
        EXPECT_EQ(Content(u"git:///a.txt"), "one");
        EXPECT_EQ(Content(u"git:///folder of its own/b.txt"), "two");
        EXPECT_EQ(Revisions(u"/a.txt").size(), 2U);
        EXPECT_EQ(Revisions(u"git:///folder of its own/b.txt").size(), 2U);
        return HasFailure() ? 1 : 0;
    };
    const int code = ExitCodeOfChild(act);
    if (code == notPermitted)
        GTEST_SKIP() << "nothing may be mounted here";
    EXPECT_EQ(code, 0);
}

} // namespace
} // namespace tarnwell::test
