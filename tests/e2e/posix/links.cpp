#include "e2e/hostrun.h"
#include "e2e/json.h"
#include "support/ordinaryuser.h"

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

TEST(Links, FindAndListShowThemAndDoNotFollow)
{
    const TempFolder folder;
    fs::create_directory(folder.Path() / "sub");
    fs::create_directory_symlink("..", folder.Path() / "sub" / "loop");
    fs::create_symlink("nowhere", folder.Path() / "sub" / "dangling");
    const HostRun run = RunHost({u"find", folder.Text()});
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(LinesOf(run.output),
                testing::ElementsAre(Utf8(folder / u"sub"), Utf8(folder / u"sub/dangling"),
                                     Utf8(folder / u"sub/loop")));
}

TEST(Links, FindGoesOnBehindWhatCannotBeListed)
{
    const TempFolder folder;
    OrdinaryUser::TakeOver(folder);
    const OrdinaryUser user;
    if (!user.Possible())
        GTEST_SKIP() << "nobody would be refused anything";
    fs::create_directories(folder.Path() / "a" / "inside");
    fs::create_directories(folder.Path() / "b" / "inside");
    fs::permissions(folder.Path() / "a", fs::perms::none);
    const HostRun run = RunHost({u"find", folder.Text()});
    fs::permissions(folder.Path() / "a", fs::perms::owner_all);
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.errors, HasSubstr("/a"));
    EXPECT_THAT(run.errors, HasSubstr("\n0x80070005\n"));
    EXPECT_THAT(LinesOf(run.output), testing::ElementsAre(Utf8(folder / u"a"), Utf8(folder / u"b"),
                                                          Utf8(folder / u"b/inside")));
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

TEST(Links, PutOntoWhatTheyLeadToLosesNothing)
{
    const TempFolder folder;
    WriteBytes(folder / u"file", "kept");
    fs::create_symlink("file", folder.Path() / "link");
    fs::create_directory_symlink(".", folder.Path() / "here");
    for (const auto& [source, target] : {std::pair{u"file", u"link"},
                                         {u"link", u"file"},
                                         {u"file", u"here/file"},
                                         {u"here/link", u"link"}})
    {
        const HostRun run = RunHost({u"put", folder / source, folder / target});
        EXPECT_EQ(run.exitCode, 1);
        EXPECT_THAT(run.errors, testing::EndsWith(" from itself.\n0x80070020\n"));
        EXPECT_EQ(ReadBytes(folder / u"file"), "kept");
    }
}

TEST(Links, PutOfStandardInputKnowsTheFileBehindIt)
{
    const TempFolder folder;
    WriteBytes(folder / u"file", "kept");
    fs::create_symlink("file", folder.Path() / "link");
    const ProcessFiles files{folder.Path() / "file", folder.Path() / "out", folder.Path() / "err"};
    for (const char16_t* const target : {u"file", u"link"})
    {
        EXPECT_EQ(RunProcess(HostProgram(), {.arguments = {u"put", u"-", folder / target}}, files),
                  1);
        EXPECT_EQ(ReadBytes(folder / u"file"), "kept");
    }
    EXPECT_EQ(RunProcess(HostProgram(), {.arguments = {u"put", u"-", folder / u"new"}}, files), 0);
    EXPECT_EQ(ReadBytes(folder / u"new"), "kept");
}

TEST(Links, AreMarkedInListings)
{
    const TempFolder folder;
    fs::create_symlink(".", folder.Path() / "here");
    EXPECT_THAT(RunHost({u"ls", folder.Text()}).output, testing::StartsWith("dl--"));
}

} // namespace

} // namespace tarnwell::test
