// Users by their numbers.
#include "platform/username.h"

#include <tarnwell/text.h>

#include <gtest/gtest.h>

#include <pwd.h>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>

namespace tarnwell::test
{
namespace
{

TEST(UserNamePosix, IsThatOfTheEffectiveUser)
{
    const passwd* const user = getpwuid(geteuid());
    ASSERT_NE(user, nullptr);
    std::u16string name;
    ASSERT_TRUE(FindUserName(name));
    EXPECT_EQ(name, DecodeName(user->pw_name));
}

TEST(UserNamePosix, AUserWithoutAnEntryHasNone)
{
    constexpr uid_t nameless = 3'999'999'999;
    if (geteuid() != 0)
        GTEST_SKIP() << "only root can become another user";
    ASSERT_EQ(getpwuid(nameless), nullptr);
    // The thread alone, as the raw system call does it.
    std::thread([] {
        ASSERT_EQ(syscall(SYS_setresuid, nameless, nameless, nameless), 0);
        std::u16string name = u"before";
        EXPECT_FALSE(FindUserName(name));
        EXPECT_EQ(GetLastError(), ERROR_NONE_MAPPED);
        EXPECT_EQ(name, u"");
    }).join();
}

} // namespace
} // namespace tarnwell::test
