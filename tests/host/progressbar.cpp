// The line that shows bytes on their way.
#include "progressbar.h"

#include <gtest/gtest.h>

namespace tarnwell::host
{
namespace
{

using namespace std::chrono_literals;

TEST(ProgressLine, TellsShareBytesAndRate)
{
    EXPECT_EQ(ProgressLine(u"a.txt", 1 << 20, 4 << 20, 2s, 0),
              u"[#####               ]  25 %, 1.0 MiB, 512.0 KiB/s, a.txt");
    EXPECT_EQ(ProgressLine(u"a", 0, 100, 0ms, 0), u"[                    ]   0 %, 0 B, 0 B/s, a");
    EXPECT_EQ(ProgressLine(u"a", 100, 100, 1s, 0),
              u"[####################] 100 %, 100 B, 100 B/s, a");
}

TEST(ProgressLine, IsFullForMoreThanAllAndForNothing)
{
    EXPECT_EQ(ProgressLine(u"a", 200, 100, 1s, 0),
              u"[####################] 100 %, 200 B, 200 B/s, a");
    EXPECT_EQ(ProgressLine(u"a", 0, 0, 1s, 0), u"[####################] 100 %, 0 B, 0 B/s, a");
}

TEST(ProgressLine, RunsWithoutATotal)
{
    EXPECT_EQ(ProgressLine(u"a", 2048, std::nullopt, 1s, 0),
              u"[####                ] 2.0 KiB, 2.0 KiB/s, a");
    EXPECT_EQ(ProgressLine(u"a", 2048, std::nullopt, 1s, 18),
              u"[##                ##] 2.0 KiB, 2.0 KiB/s, a");
}

TEST(ProgressLine, TakesSizesOfAnyLength)
{
    EXPECT_EQ(ProgressLine(u"a", 1ULL << 63, ~0ULL, 1s, 0).substr(0, 31),
              u"[##########          ]  50 %, 8");
}

} // namespace
} // namespace tarnwell::host
