// Events of other kinds than those in use.
#include "frame/handle.h"

#include <gtest/gtest.h>

namespace tarnwell::test
{
namespace
{

TEST(EventPosix, OtherRequestsAreNotSupported)
{
    SECURITY_ATTRIBUTES security{sizeof(SECURITY_ATTRIBUTES), nullptr, 1};
    const auto isRefused = [](HANDLE event) {
        return event == nullptr && GetLastError() == ERROR_NOT_SUPPORTED;
    };
    EXPECT_TRUE(isRefused(CreateEventW(&security, 1, 0, nullptr)));
    EXPECT_TRUE(isRefused(CreateEventW(nullptr, 0, 0, nullptr)));
    EXPECT_TRUE(isRefused(CreateEventW(nullptr, 1, 1, nullptr)));
    EXPECT_TRUE(isRefused(CreateEventW(nullptr, 1, 0, u"name")));
}

TEST(EventPosix, AThreadIsNoEvent)
{
    const auto nothing = [](void*) -> unsigned {
        return 0;
    };
    const OsHandle thread(
        reinterpret_cast<HANDLE>(_beginthreadex(nullptr, 0, nothing, nullptr, 0, nullptr)));
    EXPECT_FALSE(SetEvent(thread.Get()));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
}

} // namespace
} // namespace tarnwell::test
