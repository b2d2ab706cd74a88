// Numbers and times as clients print them.
#include "runner/numbers.h"

#include <gtest/gtest.h>

namespace tarnwell::test
{
namespace
{

TEST(Numbers, AreReadFromTheStart)
{
    EXPECT_EQ(LeadingNumber(u" \t\n\v\f\r-12x3"), -12);
    EXPECT_EQ(LeadingNumber(u"+7"), 7);
    EXPECT_EQ(LeadingNumber(u"qd"), 0);
    EXPECT_EQ(LeadingNumber(u"- 1"), 0);
    EXPECT_EQ(LeadingNumber(u""), 0);
}

TEST(Numbers, SaturateAt32Bits)
{
    EXPECT_EQ(LeadingNumber(u"2147483647"), 2147483647);
    EXPECT_EQ(LeadingNumber(u"2147483648"), 2147483647);
    EXPECT_EQ(LeadingNumber(u"-2147483648"), -2147483647 - 1);
    EXPECT_EQ(LeadingNumber(u"-99999999999999999999999"), -2147483647 - 1);
    EXPECT_EQ(LeadingNumber(u"99999999999999999999999"), 2147483647);
}

TEST(Numbers, OfUnixTimeBecomeFileTimes)
{
    constexpr std::uint64_t start = 116444736000000000;
    EXPECT_EQ(UnixTimeToFileTime(u"0"), start);
    EXPECT_EQ(UnixTimeToFileTime(u"1234567890"), 128790414900000000U);
    EXPECT_EQ(UnixTimeToFileTime(u"1.9"), start + 10000000);
    EXPECT_EQ(UnixTimeToFileTime(u"-1"), start - 10000000);
    EXPECT_EQ(UnixTimeToFileTime(u"+1"), start + 10000000);
    EXPECT_EQ(UnixTimeToFileTime(u" \t\n\v\f\r-1 2"), start - 10000000);
    EXPECT_EQ(UnixTimeToFileTime(u"- 1"), start);
    EXPECT_EQ(UnixTimeToFileTime(u"+-1"), start);
    EXPECT_EQ(UnixTimeToFileTime(u" "), start);
    EXPECT_EQ(UnixTimeToFileTime(u"x"), start);
    EXPECT_EQ(UnixTimeToFileTime(u""), start);
    EXPECT_EQ(UnixTimeToFileTime(u"99999999999"), start + 2147483647ULL * 10000000);
    EXPECT_EQ(UnixTimeToFileTime(u"-99999999999"), start - 2147483648ULL * 10000000);
}

TEST(Numbers, ADayThatIsNoneHasNoTime)
{
    EXPECT_EQ(FileTimeOf({1970, 1, 0, 1, 0, 0, 0, 0}), 116444736000000000U);
    EXPECT_EQ(FileTimeOf({2024, 2, 0, 30, 0, 0, 0, 0}), std::nullopt);
    EXPECT_EQ(FileTimeOf({2024, 1, 0, 1, 24, 0, 0, 0}), std::nullopt);
}

} // namespace
} // namespace tarnwell::test
