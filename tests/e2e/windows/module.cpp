#include "e2e/hostrun.h"

#include <gmock/gmock.h>

namespace tarnwell::test
{

namespace
{

TEST(ModuleOption, LibraryThatIsNotTheModule)
{
    const HostRun run = RunHost({u"--module", u"C:\\windows\\system32\\kernel32.dll", u"ls", u"."});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.errors, testing::HasSubstr("isn't the tarnwell module: it has no "
                                               "DllGetClassObject."));
}

} // namespace

} // namespace tarnwell::test
