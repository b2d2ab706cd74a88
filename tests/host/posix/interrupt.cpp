#include "commands.h"
#include "copyprogress.h"
#include "impatience.h"
#include "system.h"

#include <gtest/gtest.h>

#include <csignal>
#include <unistd.h>

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

// A command that waits for somebody who never comes.
void WaitAfterCtrlC(bool json)
{
    const InterruptWatch watch;
    const Impatience impatience(json);
    raise(SIGINT);
    constexpr unsigned forEver = 60;
    sleep(forEver);
}

TEST(ImpatienceDeathTest, EndsTheProgramAsACancelledCopyWould)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(WaitAfterCtrlC(false), testing::ExitedWithCode(exitFailed),
                "^The copy was cancelled.\n0x80004004\n$");
    EXPECT_EXIT(WaitAfterCtrlC(true), testing::ExitedWithCode(exitFailed),
                "^.\"status\":\"0x80004004\",\"message\":\"The copy was cancelled.\".\n$");
}

TEST(Impatience, LeavesWhatEndsByItself)
{
    const InterruptWatch watch;
    {
        const Impatience impatience(false);
    }
    {
        const Impatience impatience(false);
        ASSERT_EQ(std::raise(SIGINT), 0);
    }
    EXPECT_TRUE(InterruptWatch::Interrupted());
}

} // namespace

} // namespace tarnwell::host
