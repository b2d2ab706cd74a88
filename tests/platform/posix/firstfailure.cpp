// What is kept for each thread, at its first failure where there is no memory left.
#include "platform/win32.h"
#include "support/posix/sanitizer.h"

#include <tarnwell/pointers.h>

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace tarnwell::test
{
namespace
{

// What the process has, it has; the rest of the free memory is taken.
void UseUpMemory()
{
    const rlimit none{1 << 20, 1 << 20};
    setrlimit(RLIMIT_AS, &none);
    for (std::size_t size = 1 << 20; size >= 16; size /= 2)
    {
        while (std::malloc(size) != nullptr)
        {
        }
    }
}

// Whether `isRight` says so on a new thread of a process without memory.
void ExpectWithoutMemory(bool (*isRight)(IErrorInfo* made))
{
    const pid_t child = fork();
    if (child == 0)
    {
        ComPtr<ICreateErrorInfo> info;
        CreateErrorInfo(info.Out());
        const auto made = info.As<IErrorInfo>();
        std::atomic<bool> isShort = false;
        std::thread([&] {
            while (!isShort)
                std::this_thread::yield();
            _exit(isRight(made.Get()) ? 0 : 1);
        }).detach();
        UseUpMemory();
        isShort = true;
        pause();
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
}

TEST(FirstFailure, NeedsNoMemoryForErrorInformation)
{
    if (HasSanitizer())
        GTEST_SKIP() << "here the process ends when memory does";
    ExpectWithoutMemory([](IErrorInfo* made) {
        const HRESULT status = SetErrorInfo(0, made);
        IErrorInfo* found = nullptr;
        GetErrorInfo(0, &found);
        return status == S_OK && found == made;
    });
}

TEST(FirstFailure, NeedsNoMemoryForAServersReply)
{
    if (HasSanitizer())
        GTEST_SKIP() << "here the process ends when memory does";
    ExpectWithoutMemory([](IErrorInfo*) {
        return !FtpDeleteFileW(nullptr, u"a") && GetLastError() == ERROR_INVALID_HANDLE;
    });
}

} // namespace
} // namespace tarnwell::test
