// Earlier versions, and what permissions say of them.
#include "local/earlierversions.h"
#include "support/ordinaryuser.h"
#include "support/snapshotserver.h"
#include "support/snapshotshare.h"

#include <tarnwell/text.h>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace tarnwell::test
{
namespace
{

TEST(EarlierVersionsPosix, MayBeUnreadable)
{
    SnapshotShare share;
    SnapshotServer server;
    server.Hold({u"@GMT-2024.05.01-10.30.00"});
    share.Put(u"@GMT-2024.05.01-10.30.00\\a.txt", "secret");
    const std::u16string uri = share.PathOf(u"@GMT-2024.05.01-10.30.00\\a.txt");
    ASSERT_EQ(chmod(EncodeName(uri)->c_str(), 0), 0);

    const OrdinaryUser user;
    if (!user.Possible())
        GTEST_SKIP() << "nothing is forbidden to this user";
    EXPECT_TRUE(HasEarlierVersions(u"C:\\a.txt"));
    EXPECT_EQ(ListEarlierVersions(u"C:\\a.txt").size(), 2U);
}

} // namespace
} // namespace tarnwell::test
