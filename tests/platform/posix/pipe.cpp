// Pipes as only Linux has them.
#include "platform/childrun.h"
#include "platform/posix/systemcalls.h"
#include "support/opened.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/stat.h>

namespace tarnwell::test
{
namespace
{

DWORD ErrorOfWriting(const OsHandle& pipe)
{
    DWORD written = 99;
    const DWORD error = ErrorOf(WriteFile(pipe.Get(), "x", 1, &written, nullptr));
    EXPECT_EQ(written, 0U);
    return error;
}

TEST(PipesPosix, AtTheEndReadingSucceeds)
{
    Pipe pipe = PipeToChild();
    pipe.write.Close();
    DWORD count = 99;
    char byte = 0;
    EXPECT_TRUE(ReadFile(pipe.read.Get(), &byte, 1, &count, nullptr));
    EXPECT_EQ(count, 0U);
}

TEST(PipesPosix, NoEndGoesToAnotherProgram)
{
    const std::vector<int> before = InheritableDescriptors();
    const Pipe pipe = PipeToChild();
    EXPECT_EQ(InheritableDescriptors(), before);
}

TEST(PipesPosix, WritingWithoutAReaderIsAnErrorAndNoSignal)
{
    ASSERT_EQ(signal(SIGPIPE, SIG_DFL), SIG_DFL);
    Pipe pipe = PipeToChild();
    pipe.read.Close();
    EXPECT_EQ(ErrorOfWriting(pipe.write), ERROR_BROKEN_PIPE);
    sigset_t pending;
    sigpending(&pending);
    EXPECT_EQ(sigismember(&pending, SIGPIPE), 0);
}

TEST(PipesPosix, NamedPipeGivesNoSignalEither)
{
    ASSERT_EQ(signal(SIGPIPE, SIG_DFL), SIG_DFL);
    const TempFolder folder;
    const std::u16string path = folder / u"fifo";
    ASSERT_EQ(mkfifo(std::filesystem::path(path).c_str(), 0600), 0);
    OsHandle reader = OpenedForReading(path);
    const OsHandle writer = Opened(path, GENERIC_WRITE, OPEN_EXISTING);
    ASSERT_TRUE(writer);
    EXPECT_TRUE(reader.Close());
    EXPECT_EQ(ErrorOfWriting(writer), ERROR_BROKEN_PIPE);
}

TEST(PipesPosix, PendingSignalOfTheHostStays)
{
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &set, nullptr);
    raise(SIGPIPE);
    Pipe pipe = PipeToChild();
    pipe.read.Close();
    EXPECT_EQ(ErrorOfWriting(pipe.write), ERROR_BROKEN_PIPE);
    sigset_t pending;
    sigpending(&pending);
    EXPECT_EQ(sigismember(&pending, SIGPIPE), 1);
    const timespec atOnce = {};
    EXPECT_EQ(sigtimedwait(&set, nullptr, &atOnce), SIGPIPE);
    pthread_sigmask(SIG_UNBLOCK, &set, nullptr);
}

TEST(PipesPosix, ClosedHandleHasNoInformation)
{
    Pipe pipe = PipeToChild();
    const HANDLE closed = pipe.read.Get();
    pipe.read.Close();
    EXPECT_EQ(ErrorOf(SetHandleInformation(closed, HANDLE_FLAG_INHERIT, 0)), ERROR_INVALID_HANDLE);
    EXPECT_EQ(ErrorOf(SetHandleInformation(INVALID_HANDLE_VALUE, HANDLE_FLAG_INHERIT, 0)),
              ERROR_INVALID_HANDLE);
}

TEST(PipesPosix, OtherRequestsAreNotSupported)
{
    const Pipe pipe = PipeToChild();
    EXPECT_EQ(ErrorOf(SetHandleInformation(pipe.read.Get(), HANDLE_FLAG_INHERIT, 2)),
              ERROR_NOT_SUPPORTED);
    EXPECT_EQ(ErrorOf(SetHandleInformation(pipe.read.Get(), 2, 0)), ERROR_NOT_SUPPORTED);
    HANDLE read = nullptr;
    HANDLE write = nullptr;
    int descriptor = 0;
    SECURITY_ATTRIBUTES security{sizeof security, &descriptor, 0};
    EXPECT_EQ(ErrorOf(CreatePipe(&read, &write, &security, 0)), ERROR_NOT_SUPPORTED);
}

} // namespace
} // namespace tarnwell::test
