// mkdir and rm.
#include "e2e/hostrun.h"
#include "support/tempfolder.h"

#include <gmock/gmock.h>

namespace tarnwell::test
{

namespace
{

using testing::EndsWith;
using testing::StartsWith;

namespace fs = std::filesystem;

TEST(Mkdir, OneLevel)
{
    const TempFolder folder;
    const HostRun run = RunHost({u"mkdir", folder / u"new"});
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(fs::is_directory(folder / u"new"));
}

TEST(Mkdir, WithoutParentsFailsWhereOneIsMissing)
{
    const TempFolder folder;
    const std::u16string path = Joined(folder / u"a", u"b");
    const HostRun run = RunHost({u"mkdir", path});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.errors, StartsWith("Failed to create a folder at \"" + Utf8(path) + "\". "));
    EXPECT_THAT(run.errors, EndsWith("\n0x80070003\n"));
}

TEST(Mkdir, ParentsToo)
{
    const TempFolder folder;
    const std::u16string path = Joined(Joined(folder / u"a", u"b"), u"c");
    EXPECT_EQ(RunHost({u"mkdir", u"-p", path}).exitCode, 0);
    EXPECT_TRUE(fs::is_directory(path));
    EXPECT_EQ(RunHost({u"mkdir", u"-p", path}).exitCode, 0);
}

TEST(Mkdir, ExistingFolderFails)
{
    const TempFolder folder;
    fs::create_directory(folder / u"a");
    EXPECT_THAT(RunHost({u"mkdir", folder / u"a"}).errors, EndsWith("\n0x800700B7\n"));
}

TEST(Mkdir, FileInTheWay)
{
    const TempFolder folder;
    WriteBytes(folder / u"a", "");
    const HostRun run = RunHost({u"mkdir", u"-p", Joined(folder / u"a", u"b")});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.errors, StartsWith("Unable to replace an existing file with a new folder \"" +
                                       Utf8(folder / u"a") + "\"."));
    EXPECT_THAT(run.errors, EndsWith("\n0x800700B7\n"));
}

TEST(Rm, OneFile)
{
    const TempFolder folder;
    WriteBytes(folder / u"a b", "");
    WriteBytes(folder / u"other", "");
    const HostRun run = RunHost({u"--yes", u"rm", folder / u"a b"});
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_FALSE(fs::exists(folder / u"a b"));
    EXPECT_TRUE(fs::exists(folder / u"other"));
}

TEST(Rm, FolderNeedsRecursion)
{
    const TempFolder folder;
    fs::create_directory(folder / u"d");
    WriteBytes(Joined(folder / u"d", u"f"), "");
    const HostRun run = RunHost({u"--yes", u"rm", folder / u"d"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.errors,
                StartsWith("Can't delete the file or folder \"" + Utf8(folder / u"d") + "\"."));
    EXPECT_TRUE(fs::exists(Joined(folder / u"d", u"f")));

    EXPECT_EQ(RunHost({u"--yes", u"rm", u"-r", folder / u"d"}).exitCode, 0);
    EXPECT_FALSE(fs::exists(folder / u"d"));
}

TEST(Rm, MissingItemFails)
{
    const TempFolder folder;
    const HostRun run = RunHost({u"--yes", u"rm", folder / u"missing"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.errors, EndsWith("\n0x80070002\n"));
}

// The list operation, whose items go where the user can get them back from.
TEST(Rm, SeveralItems)
{
    const TempFolder home;
    const TempFolder folder;
    WriteBytes(folder / u"a", "");
    WriteBytes(folder / u"b b", "");
    WriteBytes(folder / u"kept", "");
    const HostRun run = RunHost(HostCall{
        {u"--yes", u"rm", folder / u"a", folder / u"b b"},
        {},
        {{"HOME", home.Path().string()}, {"XDG_DATA_HOME", ""}, {"DBUS_SESSION_BUS_ADDRESS", ""}},
        {}});
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_FALSE(fs::exists(folder / u"a"));
    EXPECT_FALSE(fs::exists(folder / u"b b"));
    EXPECT_TRUE(fs::exists(folder / u"kept"));
}

TEST(Rm, AddressesOfTwoFileSystemsAreRefused)
{
    const TempFolder folder;
    WriteBytes(folder / u"a", "");
    const HostRun run = RunHost({u"--yes", u"rm", folder / u"a", u"ftp://localhost/a"});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_THAT(run.errors,
                testing::HasSubstr("\"rm\" takes addresses of one file system at a time."));
    EXPECT_TRUE(fs::exists(folder / u"a"));
}

} // namespace

} // namespace tarnwell::test
