// Texts of which there are very many.
#include "frame/shorttext.h"

#include <gmock/gmock.h>

#include <string>

namespace tarnwell::test
{

namespace
{

TEST(ShortTexts, AreTheSameWithMemoryOfTheirOwn)
{
    for (std::size_t size = 0; size <= 10; ++size)
    {
        std::u16string given(size, u'x');
        ShortText<5> text;
        EXPECT_EQ(text.View(), u"");
        given.copy(text.Make(size), size);
        given.assign(size, u'y');
        EXPECT_EQ(text.View(), std::u16string(size, u'x'));
    }
}

} // namespace

} // namespace tarnwell::test
