#include "e2e/hostrun.h"
#include "e2e/json.h"
#include "support/tempfolder.h"

#include <gmock/gmock.h>

namespace tarnwell::test
{

namespace
{

using testing::HasSubstr;

namespace fs = std::filesystem;

TEST(Links, CompareDoesNotEnterLinkedFolders)
{
    const TempFolder folder;
    for (const char* side : {"left", "right"})
    {
        fs::create_directory(folder.Path() / side);
        fs::create_directory_symlink("..", folder.Path() / side / "loop");
    }
    const HostRun run = RunHost({u"compare", folder / u"left", folder / u"right"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.output, "1 equal\n");
}

TEST(Links, CompareGoesOnBehindWhatCannotBeRead)
{
    const TempFolder folder;
    for (const char* side : {"left", "right"})
    {
        fs::create_directory(folder.Path() / side);
        fs::create_symlink("nowhere", folder.Path() / side / "dangling");
    }
    WriteBytes(folder / u"right/later", "");
    const HostRun run = RunHost({u"compare", folder / u"left", folder / u"right"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.output, HasSubstr("dangling: failed\n"));
    EXPECT_THAT(run.output, HasSubstr("later: only right\n"));
    EXPECT_THAT(run.errors, HasSubstr("left/dangling\" for reading or writing."));
}

TEST(Links, AreMarkedInListings)
{
    const TempFolder folder;
    fs::create_symlink(".", folder.Path() / "here");
    EXPECT_THAT(RunHost({u"ls", folder.Text()}).output, testing::StartsWith("dl--"));
}

} // namespace

} // namespace tarnwell::test
