// cp and temp.
#include "e2e/hostrun.h"
#include "e2e/json.h"
#include "support/tempfolder.h"

#include <gmock/gmock.h>

namespace tarnwell::test
{

namespace
{

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

namespace fs = std::filesystem;

TEST(Cp, BetweenFileSystemsIsWrongUsage)
{
    const TempFolder folder;
    WriteBytes(folder / u"a", "");
    const HostRun run = RunHost({u"cp", folder / u"a", u"ftp://localhost/a"});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_THAT(run.errors, HasSubstr("\"cp\" copies within one file system"));
}

TEST(Cp, ReplacesTheTarget)
{
    const TempFolder folder;
    const std::string bytes(5'000'001, 'c');
    WriteBytes(folder / u"a b", bytes);
    WriteBytes(folder / u"ツ", "old");
    const HostRun run = RunHost({u"cp", folder / u"a b", folder / u"ツ"});
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(ReadBytes(folder / u"ツ") == bytes);
}

TEST(Cp, MissingSourceFails)
{
    const TempFolder folder;
    const std::u16string from = folder / u"missing";
    const std::u16string to = folder / u"to";
    const HostRun run = RunHost({u"cp", from, to});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.errors,
                StartsWith("Failed to copy \"" + Utf8(from) + "\" to \"" + Utf8(to) + "\". "));
    EXPECT_THAT(run.errors, EndsWith("\n0x80070002\n"));
    EXPECT_FALSE(fs::exists(to));
}

TEST(Cp, OntoItselfLosesNothing)
{
    const TempFolder folder;
    WriteBytes(folder / u"a", "mine");
    const HostRun run = RunHost({u"cp", folder / u"a", folder / u"a"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.errors, EndsWith("\n0x80070020\n"));
    EXPECT_EQ(ReadBytes(folder / u"a"), "mine");
}

TEST(Temp, MakesAnEmptyFileBesideTheAddress)
{
    const TempFolder folder;
    const HostRun run = RunHost({u"temp", folder / u"target"});
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.output, Utf8(folder / u"vrltmp0") + "\n");
    EXPECT_EQ(ReadBytes(folder / u"vrltmp0"), "");

    const HostRun second = RunHost({u"--json", u"temp", folder / u"target"});
    EXPECT_EQ(JsonLine(LinesOf(second.output).at(0)).Text("path"), Utf8(folder / u"vrltmp1"));
}

TEST(Temp, MissingFolderFails)
{
    const TempFolder folder;
    const std::u16string target = Joined(folder / u"missing", u"target");
    const HostRun run = RunHost({u"temp", target});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.errors,
                StartsWith("Failed to create a temporary file for \"" + Utf8(target) + "\"."));
    EXPECT_THAT(run.errors, EndsWith("\n0x80004005\n"));
}

} // namespace

} // namespace tarnwell::test
