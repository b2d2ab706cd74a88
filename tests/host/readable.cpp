#include "readable.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace tarnwell::host
{

namespace
{

TEST(IsoTime, KnownMoments)
{
    EXPECT_EQ(IsoTime(0), u"1601-01-01T00:00:00.0000000Z");
    EXPECT_EQ(IsoTime(116444736000000000), u"1970-01-01T00:00:00.0000000Z");
    EXPECT_EQ(IsoTime(116444735999999999), u"1969-12-31T23:59:59.9999999Z");
    EXPECT_EQ(IsoTime(133537700961234567), u"2024-03-01T12:34:56.1234567Z");
    EXPECT_EQ(IsoTime(133536384000000000), u"2024-02-29T00:00:00.0000000Z");
}

TEST(IsoTime, CenturiesWithAndWithoutLeapDay)
{
    EXPECT_EQ(IsoTime(125962560000000000), u"2000-02-29T00:00:00.0000000Z");
    // One day after 28 February 1900.
    EXPECT_EQ(IsoTime(94405824000000000), u"1900-03-01T00:00:00.0000000Z");
}

TEST(IsoTime, LastOne)
{
    EXPECT_EQ(IsoTime(UINT64_MAX), u"60056-05-28T05:36:10.9551615Z");
}

TEST(ReadableTime, UnknownTimeIsADash)
{
    EXPECT_EQ(ReadableTime(0), u"-");
    EXPECT_EQ(ReadableTime(133537700961234567), u"2024-03-01 12:34:56Z");
}

TEST(ReadableSize, Units)
{
    EXPECT_EQ(ReadableSize(0), u"0 B");
    EXPECT_EQ(ReadableSize(1023), u"1023 B");
    EXPECT_EQ(ReadableSize(1024), u"1.0 KiB");
    EXPECT_EQ(ReadableSize(1536), u"1.5 KiB");
    EXPECT_EQ(ReadableSize(1024 * 1024 - 1), u"1023.9 KiB");
    EXPECT_EQ(ReadableSize(1024 * 1024), u"1.0 MiB");
    EXPECT_EQ(ReadableSize(5'000'000'123), u"4.6 GiB");
    EXPECT_EQ(ReadableSize(UINT64_MAX), u"15.9 EiB");
}

} // namespace

} // namespace tarnwell::host
