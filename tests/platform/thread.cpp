// _beginthreadex.
#include "frame/handle.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <memory>
#include <mutex>
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
    const auto change = [](void* argument) -> unsigned {
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
    const auto tell = [](void* argument) -> unsigned {
        *static_cast<std::thread::id*>(argument) = std::this_thread::get_id();
        return 0;
    };
    const OsHandle thread = Start(tell, &id);
    EXPECT_EQ(WaitForSingleObject(thread.Get(), INFINITE), WAIT_OBJECT_0);
    EXPECT_NE(id, std::this_thread::get_id());
}

// Two threads that tell each other how far they are. Shared, as the other may outlive the test.
class Meeting
{
public:
    void Reach(int step)
    {
        const std::lock_guard lock(guard_);
        step_ = step;
        changed_.notify_all();
    }
    void WaitFor(int step)
    {
        std::unique_lock lock(guard_);
        changed_.wait(lock, [&] { return step_ >= step; });
    }

private:
    std::mutex guard_;
    std::condition_variable changed_;
    int step_ = 0;
};

TEST(Thread, RunsOnWithoutItsHandle)
{
    const auto meeting = std::make_shared<Meeting>();
    const auto meet = [](void* argument) -> unsigned {
        const std::unique_ptr<std::shared_ptr<Meeting>> own(
            static_cast<std::shared_ptr<Meeting>*>(argument));
        (*own)->WaitFor(1);
        (*own)->Reach(2);
        return 0;
    };
    OsHandle thread = Start(meet, new std::shared_ptr<Meeting>(meeting));
    EXPECT_TRUE(thread.Close());
    meeting->Reach(1);
    meeting->WaitFor(2);
}

TEST(Thread, ManyRunAtOnce)
{
    const auto count = [](void* argument) -> unsigned {
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
