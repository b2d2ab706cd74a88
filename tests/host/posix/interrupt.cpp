#include "copyprogress.h"
#include "system.h"

#include <gtest/gtest.h>

#include <csignal>

namespace tarnwell::host
{

namespace
{

TEST(CopyProgress, GoesOnUntilCtrlC)
{
    const InterruptWatch watch;
    const ComPtr<ICopyProgress> progress = MakeCopyProgress(u"file");
    VARIANT_BOOL keepGoing = VARIANT_FALSE;
    EXPECT_EQ(progress->QueryContinue(&keepGoing), S_OK);
    EXPECT_EQ(keepGoing, VARIANT_TRUE);
    ASSERT_EQ(std::raise(SIGINT), 0);
    EXPECT_EQ(progress->QueryContinue(&keepGoing), S_OK);
    EXPECT_EQ(keepGoing, VARIANT_FALSE);
}

TEST(InterruptWatch, EachBeginsAnew)
{
    {
        const InterruptWatch watch;
        ASSERT_EQ(std::raise(SIGINT), 0);
        EXPECT_TRUE(InterruptWatch::Interrupted());
    }
    const InterruptWatch watch;
    EXPECT_FALSE(InterruptWatch::Interrupted());
}

} // namespace

} // namespace tarnwell::host
