// SystemTimeToFileTime.
#include "platform/filetime.h"
#include "support/wine.h"

#include <gtest/gtest.h>

namespace tarnwell::test
{
namespace
{

struct Moment
{
    SYSTEMTIME parts;
    std::uint64_t ticks;
};

// Year, month, day of the week, day, hour, minute, second, millisecond.
const Moment moments[] = {
    {{1601, 1, 0, 1, 0, 0, 0, 0}, 0},
    {{1970, 1, 0, 1, 0, 0, 0, 0}, 116444736000000000},
    {{2024, 5, 0, 1, 10, 30, 0, 0}, 133590330000000000},
    {{2024, 2, 0, 29, 23, 59, 59, 999}, 133537247999990000},
    {{2000, 2, 0, 29, 0, 0, 0, 0}, 125962560000000000},
    {{9999, 12, 0, 31, 23, 59, 59, 0}, 2650467743990000000},
};

const SYSTEMTIME impossible[] = {
    {1600, 12, 0, 31, 0, 0, 0, 0}, {0, 1, 0, 1, 0, 0, 0, 0},      {2024, 0, 0, 1, 0, 0, 0, 0},
    {2024, 13, 0, 1, 0, 0, 0, 0},  {2024, 257, 0, 1, 0, 0, 0, 0}, {2024, 1, 0, 0, 0, 0, 0, 0},
    {2024, 1, 0, 32, 0, 0, 0, 0},  {2024, 1, 0, 257, 0, 0, 0, 0}, {2024, 4, 0, 31, 0, 0, 0, 0},
    {2024, 1, 0, 1, 24, 0, 0, 0},  {2024, 1, 0, 1, 0, 60, 0, 0},  {2024, 1, 0, 1, 0, 0, 60, 0},
    {2024, 1, 0, 1, 0, 0, 0, 1000}};

const SYSTEMTIME leapDaysOfCommonYears[] = {{2023, 2, 0, 29, 0, 0, 0, 0},
                                            {1900, 2, 0, 29, 0, 0, 0, 0}};

TEST(SystemTime, IsReadAsUtc)
{
    for (const Moment& moment : moments)
    {
        FILETIME time{};
        EXPECT_TRUE(SystemTimeToFileTime(&moment.parts, &time)) << moment.parts.wYear;
        EXPECT_EQ(TimeOf(time), moment.ticks) << moment.parts.wYear;
    }
}

TEST(SystemTime, TheDayOfTheWeekIsNotLookedAt)
{
    SYSTEMTIME parts = moments[2].parts;
    for (const WORD day : {WORD{1}, WORD{6}, WORD{99}})
    {
        parts.wDayOfWeek = day;
        FILETIME time{};
        EXPECT_TRUE(SystemTimeToFileTime(&parts, &time));
        EXPECT_EQ(TimeOf(time), moments[2].ticks);
    }
}

void ExpectRefused(const SYSTEMTIME& parts)
{
    FILETIME time{};
    EXPECT_FALSE(SystemTimeToFileTime(&parts, &time))
        << parts.wYear << '-' << parts.wMonth << '-' << parts.wDay << ' ' << parts.wHour;
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(TimeOf(time), 0U);
}

TEST(SystemTime, WhatIsNoMomentIsRefused)
{
    for (const SYSTEMTIME& parts : impossible)
        ExpectRefused(parts);
}

TEST(SystemTime, LeapDaysOfCommonYearsAreRefused)
{
    if (IsUnderWine())
        GTEST_SKIP() << "Wine takes them for the day after";
    for (const SYSTEMTIME& parts : leapDaysOfCommonYears)
        ExpectRefused(parts);
}

} // namespace
} // namespace tarnwell::test
