// Threads and the host's signals.
#include "frame/handle.h"

#include <gtest/gtest.h>

#include <csignal>

namespace tarnwell::test
{
namespace
{

std::uintptr_t Start(unsigned (*start)(void*), void* argument)
{
    return _beginthreadex(nullptr, 0, start, argument, 0, nullptr);
}

unsigned TellBlocked(void* argument)
{
    pthread_sigmask(SIG_BLOCK, nullptr, static_cast<sigset_t*>(argument));
    return 0;
}

TEST(ThreadPosix, SignalHandlersOfTheHostRunElsewhere)
{
    sigset_t blocked;
    sigemptyset(&blocked);
    const OsHandle thread(reinterpret_cast<HANDLE>(Start(TellBlocked, &blocked)));
    ASSERT_EQ(WaitForSingleObject(thread.Get(), INFINITE), WAIT_OBJECT_0);
    for (const int signal : {SIGINT, SIGTERM, SIGCHLD, SIGALRM, SIGUSR1, SIGPIPE, SIGHUP})
        EXPECT_EQ(sigismember(&blocked, signal), 1) << signal;
    // A fault of its own is for the host's crash handler.
    EXPECT_EQ(sigismember(&blocked, SIGSEGV), 0);
}

TEST(ThreadPosix, StarterKeepsItsSignals)
{
    const auto isBlocked = [] {
        sigset_t blocked;
        pthread_sigmask(SIG_BLOCK, nullptr, &blocked);
        return sigismember(&blocked, SIGTERM);
    };
    ASSERT_EQ(isBlocked(), 0);
    sigset_t ignored;
    const OsHandle thread(reinterpret_cast<HANDLE>(Start(TellBlocked, &ignored)));
    EXPECT_EQ(isBlocked(), 0);
    EXPECT_EQ(WaitForSingleObject(thread.Get(), INFINITE), WAIT_OBJECT_0);
}

TEST(ThreadPosix, OtherRequestsAreNotSupported)
{
    unsigned id = 0;
    EXPECT_EQ(_beginthreadex(nullptr, 4096, TellBlocked, nullptr, 0, nullptr), 0U);
    EXPECT_EQ(GetLastError(), ERROR_NOT_SUPPORTED);
    EXPECT_EQ(_beginthreadex(nullptr, 0, TellBlocked, nullptr, 4, nullptr), 0U);
    EXPECT_EQ(_beginthreadex(nullptr, 0, TellBlocked, nullptr, 0, &id), 0U);
}

} // namespace
} // namespace tarnwell::test
