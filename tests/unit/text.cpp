// Text on its way over the boundary.
#include "frame/text.h"

#include <tarnwell/pointers.h>

#include <gtest/gtest.h>

namespace tarnwell::test
{

namespace
{

using namespace std::string_view_literals;

TEST(BoundaryText, GoesOutWhole)
{
    Bstr text;
    EXPECT_EQ(ToHost(u"a \u65e5\xD800", text.Out()), S_OK);
    EXPECT_EQ(text.View(), u"a \u65e5\xD800");
}

TEST(BoundaryText, EndsAtItsFirstNull)
{
    Bstr text;
    EXPECT_EQ(ToHost(u"ab\0cd\0"sv, text.Out()), S_OK);
    EXPECT_EQ(text.View(), u"ab");
    EXPECT_EQ(ToHost(u"\0cd"sv, text.Out()), S_OK);
    EXPECT_TRUE(text);
    EXPECT_EQ(text.View(), u"");
}

// Units beside a null that look like one to whoever looks at several at a time.
TEST(BoundaryText, EndsAtItsFirstNullWhereverThatIs)
{
    constexpr std::size_t size = 11;
    for (const char16_t unit : {u'x', u'\x1', u'\x100', u'\x8000', u'\xFFFF'})
    {
        for (std::size_t at = 0; at <= size; ++at)
        {
            std::u16string given(size, unit);
            if (at < size)
                given[at] = u'\0';
            Bstr text;
            EXPECT_EQ(ToHost(given, text.Out()), S_OK);
            EXPECT_EQ(text.View(), std::u16string(at, unit));
        }
    }
}

TEST(BoundaryText, IsNeverNullOnSuccess)
{
    Bstr text;
    EXPECT_EQ(ToHost({}, text.Out()), S_OK);
    EXPECT_TRUE(text);
    EXPECT_EQ(text.View(), u"");
}

TEST(BoundaryText, ComesInUpToItsEnd)
{
    EXPECT_EQ(FromHost(nullptr), u"");
    EXPECT_EQ(FromHost(Wide(std::u16string(u"ab\0cd"sv))), u"ab");
}

} // namespace

} // namespace tarnwell::test
