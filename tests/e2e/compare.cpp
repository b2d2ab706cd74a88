#include "e2e/hostrun.h"
#include "e2e/json.h"
#include "support/tempfolder.h"

#include <gmock/gmock.h>

namespace tarnwell::test
{

namespace
{

using testing::ElementsAre;
using testing::EndsWith;

namespace fs = std::filesystem;

struct TwoFolders
{
    TwoFolders()
    {
        fs::create_directory(left);
        fs::create_directory(right);
    }

    void Both(const std::u16string& name, std::string_view bytes) const
    {
        WriteBytes(Joined(left, name), bytes);
        WriteBytes(Joined(right, name), bytes);
    }

    TempFolder folder;
    std::u16string left = folder / u"left";
    std::u16string right = folder / u"right";
};

TEST(CompareFiles, Equal)
{
    const TempFolder folder;
    WriteBytes(folder / u"a", "same");
    WriteBytes(folder / u"b", "same");
    const HostRun run = RunHost({u"compare", folder / u"a", folder / u"b"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.output, "a: equal, 4 and 4 bytes\n");
}

TEST(CompareFiles, FirstDifference)
{
    const TempFolder folder;
    const std::string bytes(200'000, 'x');
    std::string changed = bytes + "tail";
    changed[70'001] = 'y';
    WriteBytes(folder / u"a", bytes);
    WriteBytes(folder / u"b", changed);
    const HostRun run = RunHost({u"compare", folder / u"a", folder / u"b"});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_EQ(run.output,
              "a: different, 200000 and 200004 bytes, first difference at offset 70001\n");
}

TEST(CompareFiles, OneIsTheBeginningOfTheOther)
{
    const TempFolder folder;
    // The shorter one ends where a block of the reader does.
    WriteBytes(folder / u"a", std::string(65536, 'x'));
    WriteBytes(folder / u"b", std::string(65537, 'x'));
    const HostRun run = RunHost({u"--json", u"compare", folder / u"b", folder / u"a"});
    EXPECT_EQ(run.exitCode, 3);
    const JsonLine finding(LinesOf(run.output).at(0));
    EXPECT_EQ(finding.Names(), (std::vector<std::string>{"name", "result", "left_size",
                                                         "right_size", "first_difference"}));
    EXPECT_EQ(finding.Text("result"), "different");
    EXPECT_EQ(finding.Raw("left_size"), "65537");
    EXPECT_EQ(finding.Raw("right_size"), "65536");
    EXPECT_EQ(finding.Raw("first_difference"), "65536");
}

TEST(CompareFiles, FileAndFolder)
{
    const TempFolder folder;
    WriteBytes(folder / u"a", "");
    const HostRun run = RunHost({u"compare", folder / u"a", folder.Text()});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_EQ(run.output, "a: a file and a folder\n");
}

TEST(CompareFiles, MissingOneFails)
{
    const TempFolder folder;
    WriteBytes(folder / u"a", "");
    const HostRun run = RunHost({u"compare", folder / u"a", folder / u"b"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.errors, EndsWith("\n0x80070002\n"));
}

TEST(CompareFolders, Equal)
{
    const TwoFolders two;
    two.Both(u"a", "1");
    two.Both(u"b", "2");
    const HostRun run = RunHost({u"compare", two.left, two.right});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.output, "2 equal\n");
}

TEST(CompareFolders, EveryKindOfDifference)
{
    const TwoFolders two;
    two.Both(u"equal", "same");
    WriteBytes(Joined(two.left, u"content"), "abcd");
    WriteBytes(Joined(two.right, u"content"), "abXd");
    WriteBytes(Joined(two.left, u"size"), "abcd");
    WriteBytes(Joined(two.right, u"size"), "abcde");
    WriteBytes(Joined(two.left, u"kind"), "");
    fs::create_directory(Joined(two.right, u"kind"));
    WriteBytes(Joined(two.left, u"left"), "");
    fs::create_directory(Joined(two.right, u"right"));
    for (const std::u16string& side : {two.left, two.right})
        fs::create_directory(Joined(side, u"sub"));
    WriteBytes(Joined(Joined(two.right, u"sub"), u"deep"), "");

    const HostRun run = RunHost({u"compare", two.left, two.right});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_THAT(LinesOf(run.output),
                ElementsAre("content: different, 4 and 4 bytes, first difference at offset 2",
                            "kind: a file and a folder", "left: only left", "right: only right",
                            "size: different, 4 and 5 bytes", "sub/deep: only right",
                            "2 equal, 2 different, 1 a file and a folder, 1 only left, "
                            "2 only right"));
}

TEST(CompareFolders, WhatIsNotKnownIsNullInJson)
{
    const TwoFolders two;
    WriteBytes(Joined(two.left, u"more"), "12");
    fs::create_directory(Joined(two.left, u"sub"));
    fs::create_directory(Joined(two.right, u"sub"));
    const HostRun run = RunHost({u"--json", u"compare", two.left, two.right});
    const auto lines = JsonLinesOf(run.output);
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0].Raw("left_size"), "2");
    for (const auto& [line, member] : {std::pair{0, "right_size"},
                                       {0, "first_difference"},
                                       {1, "left_size"},
                                       {1, "right_size"},
                                       {1, "first_difference"}})
        EXPECT_EQ(lines[static_cast<std::size_t>(line)].Raw(member), "null") << member;
}

TEST(CompareFolders, WhatVersionControlKeepsIsLeftOutUnlessOthersAreNamed)
{
    const TwoFolders two;
    two.Both(u"a", "1");
    for (const char16_t* name : {u".svn", u".git", u".hg"})
    {
        fs::create_directory(Joined(two.left, name));
        WriteBytes(Joined(Joined(two.left, name), u"x"), "");
    }
    WriteBytes(Joined(two.right, u"b"), "");
    EXPECT_EQ(RunHost({u"compare", two.left, two.right}).output,
              "b: only right\n1 equal, 1 only right\n");
    const HostRun others =
        RunHost({u"compare", u"--exclude", u"b", u"--exclude=.git", two.left, two.right});
    EXPECT_EQ(others.output, ".hg: only left\n.svn: only left\n1 equal, 2 only left\n");
    const HostRun all = RunHost({u"compare", u"--exclude=", two.left, two.right});
    EXPECT_THAT(all.output, EndsWith("1 equal, 3 only left, 1 only right\n"));
}

TEST(CompareFolders, JsonTellsEveryPair)
{
    const TwoFolders two;
    two.Both(u"equal", "same");
    WriteBytes(Joined(two.right, u"more"), "12");
    std::vector<std::string> results;
    const HostRun run = RunHost({u"--json", u"compare", two.left, two.right});
    for (const JsonLine& line : JsonLinesOf(run.output))
        results.push_back(line.Text("name") + " " + line.Text("result"));
    EXPECT_THAT(results, ElementsAre("equal equal", "more only_right"));
}

} // namespace

} // namespace tarnwell::test
