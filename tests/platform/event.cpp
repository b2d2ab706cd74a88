// CreateEventW and SetEvent.
#include "frame/handle.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace tarnwell::test
{
namespace
{

EventHandle MakeEvent()
{
    return EventHandle(CreateEventW(nullptr, 1, 0, nullptr));
}

TEST(Event, OnceSetItStaysSo)
{
    const EventHandle event = MakeEvent();
    ASSERT_TRUE(event);
    EXPECT_TRUE(SetEvent(event.Get()));
    EXPECT_EQ(WaitForSingleObject(event.Get(), INFINITE), WAIT_OBJECT_0);
    EXPECT_EQ(WaitForSingleObject(event.Get(), INFINITE), WAIT_OBJECT_0);
}

TEST(Event, IsWaitedForUntilAnotherThreadSetsIt)
{
    const EventHandle event = MakeEvent();
    std::atomic<bool> told = false;
    std::thread other([&] {
        told = true;
        EXPECT_TRUE(SetEvent(event.Get()));
    });
    EXPECT_EQ(WaitForSingleObject(event.Get(), INFINITE), WAIT_OBJECT_0);
    EXPECT_TRUE(told);
    other.join();
}

TEST(Event, LetsGoAllThatWait)
{
    const EventHandle event = MakeEvent();
    std::atomic<int> gone = 0;
    std::vector<std::thread> waiting;
    for (int i = 0; i < 4; ++i)
    {
        waiting.emplace_back([&] {
            EXPECT_EQ(WaitForSingleObject(event.Get(), INFINITE), WAIT_OBJECT_0);
            ++gone;
        });
    }
    EXPECT_TRUE(SetEvent(event.Get()));
    for (std::thread& each : waiting)
        each.join();
    EXPECT_EQ(gone, 4);
}

TEST(Event, MayGoWhileTheOtherThreadStillSetsIt)
{
    for (int i = 0; i < 200; ++i)
    {
        EventHandle event = MakeEvent();
        std::thread other([set = event.Get()] { SetEvent(set); });
        EXPECT_EQ(WaitForSingleObject(event.Get(), INFINITE), WAIT_OBJECT_0);
        EXPECT_TRUE(event.Close());
        other.join();
    }
}

TEST(Event, WhatIsNoneIsRefused)
{
    EXPECT_FALSE(SetEvent(nullptr));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
}

} // namespace
} // namespace tarnwell::test
