// Who the process acts for.
#include "platform/username.h"

#include <gtest/gtest.h>

namespace tarnwell::test
{
namespace
{

TEST(UserName, IsTold)
{
    std::u16string name = u"before";
    EXPECT_TRUE(FindUserName(name));
    EXPECT_FALSE(name.empty());
    EXPECT_NE(name, u"before");
}

} // namespace
} // namespace tarnwell::test
