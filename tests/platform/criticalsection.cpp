#include "platform/win32.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace tarnwell::test
{
namespace
{

class Section
{
public:
    Section()
    {
        EXPECT_TRUE(InitializeCriticalSectionEx(&section_, 4000, 0));
    }
    ~Section()
    {
        DeleteCriticalSection(&section_);
    }
    void lock()
    {
        EnterCriticalSection(&section_);
    }
    void unlock()
    {
        LeaveCriticalSection(&section_);
    }

private:
    CRITICAL_SECTION section_;
};

TEST(CriticalSection, KeepsOthersOut)
{
    Section section;
    int count = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
    {
        threads.emplace_back([&] {
            for (int round = 0; round < 20000; ++round)
            {
                const std::lock_guard lock(section);
                ++count;
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(count, 80000);
}

TEST(CriticalSection, LetsItsOwnerInAgain)
{
    Section section;
    const std::lock_guard first(section);
    const std::lock_guard second(section);
}

} // namespace
} // namespace tarnwell::test
