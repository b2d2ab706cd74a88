// What a row says that it can't show are tests: a name that was changed would hide nothing, and one
// that is gone would excuse nothing.
#include "backends/suites/backendtest.h"

#include <algorithm>

namespace tarnwell::test
{
namespace
{

bool IsATest(const NotShown& named)
{
    const testing::UnitTest& all = *testing::UnitTest::GetInstance();
    for (int i = 0; i < all.total_test_suite_count(); ++i)
    {
        const testing::TestSuite& suite = *all.GetTestSuite(i);
        for (int j = 0; j < suite.total_test_count(); ++j)
        {
            const std::string whole =
                std::string(suite.name()) + "." + suite.GetTestInfo(j)->name() + "/";
            if (IsNamedIn(whole, named))
                return true;
        }
    }
    return false;
}

TEST(NotShownTests, Exist)
{
    for (const Backend* const backend : Backends())
    {
        for (const NotShown& each : backend->notShown)
            EXPECT_TRUE(IsATest(each)) << backend->name << ": " << each.test;
    }
    EXPECT_FALSE(IsATest({"Listing.NoSuchTest", ""}));
    EXPECT_TRUE(IsATest({"Listing.ASnapshotStays", ""}));
}

} // namespace
} // namespace tarnwell::test
