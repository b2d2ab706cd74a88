// What the Mercurial client's run gets on Windows.
#include "module/mercurialtest.h"
#include "support/environmentvalue.h"
#include "support/windows/recording.h"

#include <tarnwell/text.h>

namespace tarnwell::test
{

namespace
{

// The root of the drive that the test runs on.
std::string RootOfTheDrive()
{
    return std::filesystem::current_path().root_path().string();
}

TEST_F(Mercurial, TheLogIsAskedWithLineFeedsAndTabsThemselves)
{
    repository.Commit(u"sub\\a b.txt", "bytes", "first");
    const Recording recording;
    EXPECT_TRUE(HasRevisions(Address(u"sub\\a b.txt")));
    const RecordedRun run = recording.Run();
    EXPECT_EQ(run.commandLine,
              "\"hg.exe\" log --template \"{rev}\n{author}\n{date}\n\t{desc|tabindent}\n!\n\" \"" +
                  Bytes(repository / u"sub\\a b.txt") + "\"");
    EXPECT_EQ(run.folder, RootOfTheDrive());
    EXPECT_EQ(run.inputSize, "0");
}

TEST_F(Mercurial, ContentIsAskedByTheWholePath)
{
    const std::string number = repository.Commit(u"sub\\a.txt", "bytes", "first");
    const Recording recording;
    EXPECT_EQ(Content(Address(u"sub\\a.txt", number)), "bytes");
    EXPECT_EQ(recording.Run().commandLine,
              "\"hg.exe\" cat -r \"0\" \"" + Bytes(repository / u"sub\\a.txt") + "\"");
    EXPECT_EQ(Content(Address(u"sub\\a.txt")), "bytes");
    EXPECT_EQ(recording.Run().commandLine,
              "\"hg.exe\" cat \"" + Bytes(repository / u"sub\\a.txt") + "\"");
}

// Whoever sets HGPLAIN for the clients sets it for the host.
TEST_F(Mercurial, AnAliasOfTheUsersCountsWithoutPlainOutput)
{
    repository.Commit(u"a.txt", "1", "first");
    const TempFolder settings;
    WriteBytes(settings / u"hgrc", "[alias]\nlog = log --limit 0\n");
    const EnvironmentValue variable("HGRCPATH", Bytes(settings / u"hgrc").c_str());
    EXPECT_EQ(Revisions(Address(u"a.txt")).size(), 0U);
    const EnvironmentValue plain("HGPLAIN", "1");
    EXPECT_EQ(Revisions(Address(u"a.txt")).size(), 2U);
}

TEST_F(Mercurial, TheClientGetsTheWholeEnvironment)
{
    const Recording recording;
    const EnvironmentValue git("GIT_DIR", "nowhere");
    EXPECT_FALSE(HasRevisions(Address(u"a.txt")));
    EXPECT_THAT(recording.Run().environment, testing::Contains("GIT_DIR=nowhere"));
}

} // namespace

} // namespace tarnwell::test
