// find, and ls with patterns and -r.
#include "e2e/hostrun.h"
#include "e2e/json.h"
#include "support/tempfolder.h"

#include <gmock/gmock.h>

namespace tarnwell::test
{

namespace
{

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace fs = std::filesystem;

class Find : public testing::Test
{
protected:
    Find()
    {
        fs::create_directories(folder_.Path() / "b" / "deep");
        WriteBytes(folder_ / u"z.txt", "");
        WriteBytes(folder_ / u"b/a.txt", "");
        WriteBytes(folder_ / u"b/deep/b.txt", "");
        WriteBytes(folder_ / u"b/deep/b.bin", "");
    }

    // What JSON lines say of an item, in their order.
    static std::vector<std::string> NamesIn(const std::string& output)
    {
        std::vector<std::string> names;
        for (const JsonLine& line : JsonLinesOf(output))
            names.push_back(line.Text("name"));
        return names;
    }

    std::string PathOf(const char* relative) const
    {
        fs::path path = folder_.Path() / relative;
        return Utf8(path.make_preferred().u16string());
    }

    const TempFolder folder_;
};

TEST_F(Find, GivesAddressesOfAllBelowAFolder)
{
    const HostRun run = RunHost({u"find", folder_.Text()});
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(LinesOf(run.output),
                ElementsAre(PathOf("b"), PathOf("z.txt"), PathOf("b/a.txt"), PathOf("b/deep"),
                            PathOf("b/deep/b.bin"), PathOf("b/deep/b.txt")));
}

TEST_F(Find, TakesPatternsOfNames)
{
    EXPECT_THAT(LinesOf(RunHost({u"find", folder_.Text(), u"*.bin", u"deep"}).output),
                ElementsAre(PathOf("b/deep"), PathOf("b/deep/b.bin")));
    const HostRun none = RunHost({u"find", folder_.Text(), u"nothing"});
    EXPECT_EQ(none.exitCode, 0);
    EXPECT_THAT(none.output, IsEmpty());
}

TEST_F(Find, TellsAllFactsToPrograms)
{
    const HostRun run = RunHost({u"--json", u"find", folder_.Text(), u"*.txt"});
    EXPECT_THAT(NamesIn(run.output), ElementsAre("z.txt", "a.txt", "b.txt"));
}

TEST_F(Find, ListsRecursivelyWithNamesFromTheFirstFolder)
{
    const HostRun run = RunHost({u"ls", u"-r", folder_.Text(), u"*.txt"});
    const auto lines = LinesOf(run.output);
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_THAT(lines[0], testing::EndsWith("  z.txt"));
    EXPECT_THAT(lines[1], testing::EndsWith("  b/a.txt"));
    EXPECT_THAT(lines[2], testing::EndsWith("  b/deep/b.txt"));
    EXPECT_THAT(NamesIn(RunHost({u"--json", u"ls", folder_.Text(), u"?"}).output),
                ElementsAre("b"));
}

TEST_F(Find, OfAFileOrNothingFails)
{
    for (const std::u16string& address : {folder_ / u"z.txt", folder_ / u"missing"})
    {
        const HostRun run = RunHost({u"find", address});
        EXPECT_EQ(run.exitCode, 1);
        EXPECT_THAT(run.output, IsEmpty());
        EXPECT_THAT(run.errors, HasSubstr("\n0x8007000"));
    }
}

// By the prescribed calls their file systems know no folders.
TEST_F(Find, OfAWorkingCopysAddressFails)
{
    for (const char16_t* address : {u"git:a", u"hg:a"})
    {
        const HostRun run = RunPrescribed({u"find", address});
        EXPECT_EQ(run.exitCode, 1);
        EXPECT_THAT(run.errors, HasSubstr("\n0x8"));
    }
}

} // namespace

} // namespace tarnwell::test
