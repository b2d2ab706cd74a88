// A stream whose file can't be closed.
#include "module/localtest.h"

#include <unistd.h>

namespace tarnwell::test
{

namespace
{

namespace fs = std::filesystem;

// The descriptor by which this process has `path` open; -1 if there is none.
int DescriptorOf(const fs::path& path)
{
    for (const fs::directory_entry& entry : fs::directory_iterator("/proc/self/fd"))
    {
        std::error_code ignored;
        if (fs::read_symlink(entry.path(), ignored) == path)
            return std::stoi(entry.path().filename());
    }
    return -1;
}

class Closing : public LocalTest
{
};

TEST_F(Closing, AFileThatSomebodyElseClosedIsReportedOnce)
{
    const std::u16string path = Put(u"a.txt");
    const auto stream = Open(path);
    const int descriptor = DescriptorOf(path);
    ASSERT_GE(descriptor, 0);
    ASSERT_EQ(close(descriptor), 0);
    const Outcome outcome = OutcomeOf([&] { return stream->Close(); });
    EXPECT_THAT(outcome, Failed(Win32Status(6), u"Failed while closing the stream."));
    ASSERT_TRUE(outcome.error);
    EXPECT_TRUE(outcome.error->interfaceId == IID_IFileStream);
    EXPECT_THAT(OutcomeOf([&] { return stream->Close(); }), Succeeded());
}

} // namespace

} // namespace tarnwell::test
