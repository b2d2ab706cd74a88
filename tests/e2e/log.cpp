// log of local files, by the prescribed calls.
#include "e2e/hostrun.h"
#include "support/tempfolder.h"

#include <gmock/gmock.h>

namespace tarnwell::test
{

namespace
{

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

TEST(Log, OfAFileWithoutEarlierVersionsSaysSo)
{
    const TempFolder folder;
    WriteBytes(folder / u"a.txt", "x");
    for (const std::u16string& path : {folder / u"a.txt", std::u16string(u"a.txt")})
    {
        const HostRun run = RunPrescribed(HostCall{{u"log", path}, {}, {}, folder.Path()});
        EXPECT_EQ(run.exitCode, 0);
        EXPECT_EQ(run.output, "No revisions.\n");
        EXPECT_THAT(run.errors, IsEmpty());
    }
}

TEST(Log, ForProgramsNoRevisionIsNoLine)
{
    const TempFolder folder;
    WriteBytes(folder / u"a.txt", "x");
    const HostRun run = RunPrescribed({u"--json", u"log", folder / u"a.txt"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(run.output + run.errors, IsEmpty());
}

TEST(Log, OfAFileInAWorkingCopySaysWhereItsHistoryIs)
{
    for (const auto& [marker, hint] :
         {std::pair(".git", "\"log git:"), std::pair(".hg", "\"log hg:"),
          std::pair(".svn", "\"svn info\"")})
    {
        const TempFolder folder;
        std::filesystem::create_directories(folder.Path() / marker);
        std::filesystem::create_directories(folder.Path() / "sub");
        const std::u16string path = folder / u"sub";
        const HostRun prescribed = RunPrescribed({u"log", path});
        EXPECT_EQ(prescribed.output, "No revisions.\n");
        EXPECT_THAT(prescribed.errors,
                    AllOf(StartsWith("It is in a working copy"), HasSubstr(hint)));
        // There are no snapshots here: whatever the reason is, the hint stands behind it.
        const HostRun run = RunHost({u"log", path});
        EXPECT_THAT(run.errors, HasSubstr(hint));
        EXPECT_THAT(RunHost({u"--json", u"log", path}).errors, Not(HasSubstr("working copy")));
        EXPECT_THAT(RunPrescribed({u"--json", u"log", path}).errors, IsEmpty());
    }
}

TEST(Log, OfAFileInNoWorkingCopyHasNoHint)
{
    const TempFolder folder;
    WriteBytes(folder / u"a.txt", "x");
    EXPECT_THAT(RunHost({u"log", folder / u"a.txt"}).errors, Not(HasSubstr("working copy")));
}

} // namespace

} // namespace tarnwell::test
