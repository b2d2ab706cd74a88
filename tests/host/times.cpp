#include "times.h"
#include "readable.h"

#include <gtest/gtest.h>

namespace tarnwell::host
{

namespace
{

std::u16string Read(std::u16string_view text, DayPart part = DayPart::Begin)
{
    const std::optional<std::uint64_t> time = ParseTime(text, part);
    return time ? IsoTime(*time) : u"none";
}

TEST(Times, AreReadAsTheyAreShown)
{
    EXPECT_EQ(Read(u"2026-03-01"), u"2026-03-01T00:00:00.0000000Z");
    EXPECT_EQ(Read(u"2026-03-01", DayPart::End), u"2026-03-01T23:59:59.0000000Z");
    for (const DayPart part : {DayPart::Begin, DayPart::End})
    {
        EXPECT_EQ(Read(u"2026-03-01T12:34", part), u"2026-03-01T12:34:00.0000000Z");
        EXPECT_EQ(Read(u"2026-03-01 12:34:56Z", part), u"2026-03-01T12:34:56.0000000Z");
    }
    EXPECT_EQ(Read(u"1601-01-01"), u"1601-01-01T00:00:00.0000000Z");
    EXPECT_EQ(Read(u"9999-12-31T23:59:59"), u"9999-12-31T23:59:59.0000000Z");
    EXPECT_EQ(Read(u"2024-02-29"), u"2024-02-29T00:00:00.0000000Z");
}

TEST(Times, AreNothingElse)
{
    for (const char16_t* text :
         {u"", u"now", u"2026", u"2026-3-1", u"2026-02-29", u"2026-13-01", u"2026-00-10",
          u"1600-12-31", u"2026/03/01", u"2026-03-01T", u"2026-03-01T12", u"2026-03-01T24:00",
          u"2026-03-01T12:60", u"2026-03-01T12:00:60", u"2026-03-01T12:00:00ZZ",
          u"2026-03-01 12:00:00+01", u"2026-03-0112:00", u"-026-03-01", u"2026-03-01Z12:00"})
        EXPECT_EQ(Read(text), u"none")
            << std::string(text, text + std::u16string_view(text).size());
}

} // namespace

} // namespace tarnwell::host
