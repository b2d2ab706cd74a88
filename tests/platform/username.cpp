// GetUserNameW.
#include "platform/wide.h"

#include <gtest/gtest.h>

namespace tarnwell::test
{
namespace
{

TEST(UserName, IsTerminatedAndCounted)
{
    WCHAR name[257] = {};
    DWORD size = 257;
    ASSERT_TRUE(GetUserNameW(name, &size));
    EXPECT_FALSE(Units(name).empty());
    EXPECT_EQ(size, Units(name).size() + 1);
}

TEST(UserName, NeedsRoomForItsTerminator)
{
    WCHAR name[257] = {};
    DWORD whole = 257;
    ASSERT_TRUE(GetUserNameW(name, &whole));

    DWORD size = whole;
    EXPECT_TRUE(GetUserNameW(name, &size));
    size = whole - 1;
    EXPECT_FALSE(GetUserNameW(name, &size));
    EXPECT_EQ(GetLastError(), ERROR_INSUFFICIENT_BUFFER);
    EXPECT_EQ(size, whole);
}

} // namespace
} // namespace tarnwell::test
