// _beginthreadex.
#include "frame/handle.h"

#include <gtest/gtest.h>

#include <semaphore>
#include <thread>

namespace tarnwell::test
{
namespace
{

OsHandle Start(unsigned (*start)(void*), void* argument)
{
    return OsHandle(
        reinterpret_cast<HANDLE>(_beginthreadex(nullptr, 0, start, argument, 0, nullptr)));
}

TEST(Thread, RunsWithItsArgumentAndIsWaitedFor)
{
    std::string text = "before";
    const auto change = [](void* argument) -> unsigned
    {
        *static_cast<std::string*>(argument) = "after";
        return 0;
    };
    const OsHandle thread = Start(change, &text);
    ASSERT_NE(thread.Get(), nullptr);
    EXPECT_EQ(WaitForSingleObject(thread.Get(), INFINITE), WAIT_OBJECT_0);
    EXPECT_EQ(text, "after");
    // An end stays one.
    EXPECT_EQ(WaitForSingleObject(thread.Get(), INFINITE), WAIT_OBJECT_0);
}

TEST(Thread, IsAnother)
{
    std::thread::id id = std::this_thread::get_id();
    const auto tell = [](void* argument) -> unsigned
    {
        *static_cast<std::thread::id*>(argument) = std::this_thread::get_id();
        return 0;
    };
    const OsHandle thread = Start(tell, &id);
    EXPECT_EQ(WaitForSingleObject(thread.Get(), INFINITE), WAIT_OBJECT_0);
    EXPECT_NE(id, std::this_thread::get_id());
}

TEST(Thread, RunsOnWithoutItsHandle)
{
    struct Meeting
    {
        std::binary_semaphore begin{0};
        std::binary_semaphore end{0};
    } meeting;
    const auto meet = [](void* argument) -> unsigned
    {
        auto& meeting = *static_cast<Meeting*>(argument);
        meeting.begin.acquire();
        meeting.end.release();
        return 0;
    };
    OsHandle thread = Start(meet, &meeting);
    EXPECT_TRUE(thread.Close());
    meeting.begin.release();
    meeting.end.acquire();
}

TEST(Thread, ManyRunAtOnce)
{
    const auto count = [](void* argument) -> unsigned
    {
        ++*static_cast<int*>(argument);
        return 0;
    };
    std::vector<int> counts(16);
    std::vector<OsHandle> threads;
    for (int& each : counts)
        threads.push_back(Start(count, &each));
    for (const OsHandle& thread : threads)
        EXPECT_EQ(WaitForSingleObject(thread.Get(), INFINITE), WAIT_OBJECT_0);
    EXPECT_EQ(counts, std::vector<int>(16, 1));
}

} // namespace
} // namespace tarnwell::test
