// Calendar times become file times.
#include "platform/win32.h"
#include "support/wine.h"

#include <gtest/gtest.h>

namespace tarnwell::test
{
namespace
{

// The ticks of a calendar time; 0 with the error kept if there is no such time.
std::uint64_t TicksOf(const SYSTEMTIME& parts)
{
    FILETIME time{};
    SetLastError(ERROR_SUCCESS);
    if (!SystemTimeToFileTime(&parts, &time))
        return 0;
    return (std::uint64_t{time.dwHighDateTime} << 32) | time.dwLowDateTime;
}

TEST(SystemTime, BecomesTicks)
{
    EXPECT_EQ(TicksOf({1970, 1, 0, 1, 0, 0, 0, 0}), 116444736000000000U);
    EXPECT_EQ(TicksOf({2024, 2, 0, 29, 23, 59, 59, 999}), 133537247999990000U);
    EXPECT_EQ(TicksOf({1601, 1, 0, 1, 0, 0, 0, 1}), 10000U);
}

TEST(SystemTime, TheDayOfTheWeekIsNotLookedAt)
{
    EXPECT_EQ(TicksOf({1970, 1, 99, 1, 0, 0, 0, 0}), 116444736000000000U);
}

TEST(SystemTime, WhatIsNoTimeIsRefused)
{
    for (const SYSTEMTIME& parts :
         {SYSTEMTIME{1600, 12, 0, 31, 0, 0, 0, 0}, SYSTEMTIME{2023, 2, 0, 30, 0, 0, 0, 0},
          SYSTEMTIME{2023, 0, 0, 1, 0, 0, 0, 0}, SYSTEMTIME{2023, 13, 0, 1, 0, 0, 0, 0},
          SYSTEMTIME{2023, 1, 0, 0, 0, 0, 0, 0}, SYSTEMTIME{2023, 4, 0, 31, 0, 0, 0, 0},
          SYSTEMTIME{2023, 1, 0, 1, 24, 0, 0, 0}, SYSTEMTIME{2023, 1, 0, 1, 0, 60, 0, 0},
          SYSTEMTIME{2023, 1, 0, 1, 0, 0, 60, 0}, SYSTEMTIME{2023, 1, 0, 1, 0, 0, 0, 1000},
          SYSTEMTIME{65535, 1, 0, 1, 0, 0, 0, 0}})
    {
        EXPECT_EQ(TicksOf(parts), 0U) << parts.wYear << "-" << parts.wMonth << "-" << parts.wDay;
        EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
    }
}

TEST(SystemTime, TheLeapDayIsOneOfLeapYearsOnly)
{
    EXPECT_NE(TicksOf({2000, 2, 0, 29, 0, 0, 0, 0}), 0U);
    if (IsUnderWine())
        GTEST_SKIP() << "Wine has it in every year";
    EXPECT_EQ(TicksOf({2023, 2, 0, 29, 0, 0, 0, 0}), 0U);
    EXPECT_EQ(TicksOf({1900, 2, 0, 29, 0, 0, 0, 0}), 0U);
}

} // namespace
} // namespace tarnwell::test
