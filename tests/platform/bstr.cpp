// Texts with a count.
#include "platform/wide.h"

#include <tarnwell/pointers.h>

#include <gtest/gtest.h>

#include <cstring>

namespace tarnwell::test
{
namespace
{

Bstr FromText(const std::u16string& text)
{
    Bstr owner;
    *owner.Out() = SysAllocString(Wide(text));
    return owner;
}

Bstr FromUnits(const OLECHAR* units, UINT length)
{
    Bstr owner;
    *owner.Out() = SysAllocStringLen(units, length);
    return owner;
}

TEST(BstrText, IsACopyWithACountAndATerminator)
{
    const Bstr text = FromText(u"h\u00e4llo");
    ASSERT_TRUE(text);
    EXPECT_EQ(SysStringLen(text.Get()), 5U);
    EXPECT_EQ(text.View(), u"h\u00e4llo");
    EXPECT_EQ(text.Get()[5], 0);
}

TEST(BstrText, CountInBytesStandsBeforeTheUnits)
{
    const Bstr text = FromText(u"abc");
    ASSERT_TRUE(text);
    std::uint32_t bytes = 0;
    std::memcpy(&bytes, reinterpret_cast<const char*>(text.Get()) - sizeof bytes, sizeof bytes);
    EXPECT_EQ(bytes, 6U);
}

TEST(BstrText, EmptyTextIsNotNull)
{
    const Bstr empty = FromText(u"");
    ASSERT_TRUE(empty);
    EXPECT_EQ(SysStringLen(empty.Get()), 0U);
    EXPECT_EQ(empty.Get()[0], 0);
}

TEST(BstrText, NullIsNull)
{
    EXPECT_EQ(SysAllocString(nullptr), nullptr);
    EXPECT_EQ(SysStringLen(nullptr), 0U);
    SysFreeString(nullptr);
}

TEST(BstrText, CountedTextKeepsTerminatorsInside)
{
    const std::u16string units(u"a\0b", 3);
    const Bstr text = FromUnits(Wide(units), 3);
    ASSERT_TRUE(text);
    EXPECT_EQ(text.View(), units);
}

TEST(BstrText, CountedTextIsCutFromALongerOne)
{
    const std::u16string units = u"abcdef";
    const Bstr text = FromUnits(Wide(units), 3);
    ASSERT_TRUE(text);
    EXPECT_EQ(text.View(), u"abc");
    EXPECT_EQ(text.Get()[3], 0);
}

TEST(BstrText, RoomCanBeHadWithoutAText)
{
    const Bstr room = FromUnits(nullptr, 4);
    ASSERT_TRUE(room);
    EXPECT_EQ(SysStringLen(room.Get()), 4U);
    EXPECT_EQ(room.Get()[4], 0);
}

TEST(BstrText, ImpossibleLengthIsNull)
{
    EXPECT_EQ(SysAllocStringLen(nullptr, 0x7FFFFFFF), nullptr);
    EXPECT_EQ(SysAllocStringLen(nullptr, 0xFFFFFFFF), nullptr);
}

} // namespace
} // namespace tarnwell::test
