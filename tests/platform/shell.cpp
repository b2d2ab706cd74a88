// Deleting for good through the shell, without a question.
#include "platform/shelldelete.h"
#include "support/tempfolder.h"
#include "support/wine.h"

#include <gtest/gtest.h>

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;

void MakeTree(const fs::path& root)
{
    for (const char* const name : {"a", "b", "c"})
    {
        fs::create_directories(root / name / "deep" / "deeper");
        WriteBytes((root / name / "file").u16string(), "x");
        WriteBytes((root / name / "deep" / "file").u16string(), "x");
    }
}

TEST(ShellDelete, RemovesAFile)
{
    const TempFolder folder;
    WriteBytes(folder / u"a", "x");
    const ShellResult result = ShellDelete({folder / u"a"}, silently);
    EXPECT_EQ(result.code, 0);
    EXPECT_FALSE(result.aborted);
    EXPECT_FALSE(fs::exists(folder.Path() / "a"));
}

TEST(ShellDelete, RemovesATree)
{
    const TempFolder folder;
    MakeTree(folder.Path() / "tree");
    EXPECT_EQ(ShellDelete({folder / u"tree"}, silently).code, 0);
    EXPECT_FALSE(fs::exists(folder.Path() / "tree"));
}

TEST(ShellDelete, RemovesReadOnlyFiles)
{
    const TempFolder folder;
    MakeTree(folder.Path() / "tree");
    const std::u16string file = (folder.Path() / "tree" / "b" / "file").u16string();
    ASSERT_TRUE(SetFileAttributesW(Wide(file), FILE_ATTRIBUTE_READONLY));
    EXPECT_EQ(ShellDelete({folder / u"tree"}, silently).code, 0);
    EXPECT_FALSE(fs::exists(folder.Path() / "tree"));
}

TEST(ShellDelete, RemovesAList)
{
    const TempFolder folder;
    MakeTree(folder.Path() / "tree");
    for (const char16_t* const name : {u"a", u"b", u"kept"})
        WriteBytes(folder / name, "x");
    EXPECT_EQ(ShellDelete({folder / u"a", folder / u"tree", folder / u"b"}, silently).code, 0);
    EXPECT_FALSE(fs::exists(folder.Path() / "a"));
    EXPECT_FALSE(fs::exists(folder.Path() / "b"));
    EXPECT_FALSE(fs::exists(folder.Path() / "tree"));
    EXPECT_TRUE(fs::exists(folder.Path() / "kept"));
}

TEST(ShellDelete, MissingItemFails)
{
    const TempFolder folder;
    EXPECT_NE(ShellDelete({folder / u"none"}, silently).code, 0);
}

TEST(ShellDelete, WithoutRecursionAnEmptyFolderGoes)
{
    const TempFolder folder;
    fs::create_directory(folder.Path() / "empty");
    EXPECT_EQ(ShellDelete({folder / u"empty"}, silently | FOF_NORECURSION).code, 0);
    EXPECT_FALSE(fs::exists(folder.Path() / "empty"));
}

TEST(ShellDelete, WithoutRecursionAFullFolderStays)
{
    if (IsUnderWine())
        GTEST_SKIP() << "Wine does not look at FOF_NORECURSION";
    const TempFolder folder;
    MakeTree(folder.Path() / "tree");
    ShellDelete({folder / u"tree"}, silently | FOF_NORECURSION);
    EXPECT_TRUE(fs::exists(folder.Path() / "tree" / "a" / "deep" / "file"));
}

} // namespace
} // namespace tarnwell::test
