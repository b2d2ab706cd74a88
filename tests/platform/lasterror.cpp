#include "platform/win32.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace tarnwell::test
{
namespace
{

TEST(LastError, IsEachThreadsOwn)
{
    // The other thread begins before and ends behind what is tested: starting and ending one may
    // itself touch the error.
    std::atomic<bool> isSet = false;
    std::atomic<bool> isRead = false;
    DWORD ofTheOther = 99;
    std::thread other([&] {
        while (!isSet)
            std::this_thread::yield();
        ofTheOther = GetLastError();
        SetLastError(ERROR_NOT_READY);
        isRead = true;
    });
    SetLastError(ERROR_BUSY);
    isSet = true;
    while (!isRead)
    {
    }
    const DWORD own = GetLastError();
    other.join();
    EXPECT_EQ(ofTheOther, ERROR_SUCCESS);
    EXPECT_EQ(own, ERROR_BUSY);
}

} // namespace
} // namespace tarnwell::test
