#include "e2e/hostrun.h"

#include <tarnwell/text.h>

#include <gmock/gmock.h>

#include <dlfcn.h>
#include <gnu/libc-version.h>

namespace tarnwell::test
{

namespace
{

TEST(ModuleOption, LibraryThatIsNotTheModule)
{
    // Of what no sanitizer has a copy of its own.
    Dl_info systemLibrary{};
    ASSERT_NE(dladdr(reinterpret_cast<void*>(&gnu_get_libc_version), &systemLibrary), 0);
    const std::u16string file = DecodeName(systemLibrary.dli_fname);
    const HostRun run = RunHost({u"--module", file, u"ls", u"."});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.errors, "\"" + Utf8(file) +
                              "\" isn't the tarnwell module: it has no DllGetClassObject.\n"
                              "0x80004005\n");
}

TEST(Put, FullDeviceIsAFailure)
{
    // /dev/full takes nothing.
    const HostRun run = RunHost({u"put", u"/proc/self/exe", u"/dev/full"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.errors, testing::HasSubstr("\n0x80070070\n"));
}

} // namespace

} // namespace tarnwell::test
