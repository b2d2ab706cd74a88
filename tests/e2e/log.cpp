// log of local files, by the prescribed calls.
#include "e2e/hostrun.h"
#include "support/tempfolder.h"

#include <gmock/gmock.h>

namespace tarnwell::test
{

namespace
{

using testing::IsEmpty;

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

} // namespace

} // namespace tarnwell::test
