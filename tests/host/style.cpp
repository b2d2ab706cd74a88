// Colours, and who wants none.
#include "style.h"

#include <gtest/gtest.h>

namespace tarnwell::host
{
namespace
{

TEST(Style, EndsBehindTheText)
{
    EXPECT_EQ(Coloured("a", Style::Folder), "\x1b[1;34ma\x1b[0m");
    EXPECT_EQ(Coloured("a", Style::Link), "\x1b[36ma\x1b[0m");
    EXPECT_EQ(Coloured("a", Style::Error), "\x1b[31ma\x1b[0m");
    EXPECT_EQ(Coloured("a", Style::Plain), "a");
}

TEST(Style, AnyValueOfNoColorTakesThemAway)
{
    EXPECT_TRUE(WantsColours(nullptr));
    EXPECT_TRUE(WantsColours(""));
    EXPECT_FALSE(WantsColours("0"));
    EXPECT_FALSE(WantsColours("1"));
}

} // namespace
} // namespace tarnwell::host
