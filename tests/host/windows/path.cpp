// Paths from the root, where there are several kinds of root.
#include "system.h"

#include <gtest/gtest.h>

namespace tarnwell::host
{

namespace
{

TEST(AbsolutePaths, StayAsTheyAre)
{
    for (const std::u16string& path :
         {std::u16string(u"C:\\dir\\file.txt"), std::u16string(u"\\\\server\\share\\file.txt"),
          std::u16string(u"\\\\localhost\\C$\\@GMT-2024.05.01-10.30.00\\dir\\file.txt"),
          std::u16string(u"\\\\?\\C:\\dir\\file.txt")})
        EXPECT_EQ(AbsolutePath(path), path);
}

TEST(AbsolutePaths, AreMadeOfOthers)
{
    const std::u16string folder = FromPath(std::filesystem::current_path());
    EXPECT_EQ(AbsolutePath(u"a\\b"), folder + u"\\a\\b");
    EXPECT_EQ(AbsolutePath(u"a/./c/../b"), folder + u"\\a\\b");
    EXPECT_EQ(AbsolutePath(u"C:\\a\\..\\b"), u"C:\\b");
    EXPECT_EQ(AbsolutePath(u""), u"");
}

} // namespace

} // namespace tarnwell::host
