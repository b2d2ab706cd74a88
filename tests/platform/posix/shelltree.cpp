// Deleting through the shell: what only shows on this platform.
#include "platform/icons.h"
#include "platform/posix/systemcalls.h"
#include "platform/shelldelete.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;

int CodeOf(std::initializer_list<std::u16string> paths, unsigned flags = silently)
{
    return ShellDelete(paths, static_cast<WORD>(flags)).code;
}

// A chain of folders, far longer than a path may be, with a file in each.
void MakeDeepTree(const fs::path& root, int levels)
{
    ASSERT_EQ(mkdir(root.c_str(), 0755), 0);
    int at = open(root.c_str(), O_DIRECTORY | O_CLOEXEC);
    for (int i = 0; i < levels; ++i)
    {
        ASSERT_EQ(mkdirat(at, "level", 0755), 0);
        ASSERT_EQ(mknodat(at, "file", S_IFREG | 0644, 0), 0);
        const int below = openat(at, "level", O_DIRECTORY | O_CLOEXEC);
        ASSERT_GE(below, 0);
        close(at);
        at = below;
    }
    close(at);
}

TEST(ShellTree, DeepTreeGoesWithFewDescriptors)
{
    const TempFolder folder;
    ASSERT_NO_FATAL_FAILURE(MakeDeepTree(folder.Path() / "deep", 1500));
    rlimit before = {};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
    const rlimit few{100, before.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &few), 0);
    const int code = CodeOf({folder / u"deep"});
    setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_EQ(code, 0);
    EXPECT_FALSE(fs::exists(folder.Path() / "deep"));
}

// Somebody may change the tree while it is walked over. The first opening is that of the folder
// that the tree is in.
TEST(ShellTree, ALinkThatTakesAFoldersPlaceIsNotFollowed)
{
    const TempFolder folder;
    const TempFolder outside;
    WriteBytes(outside / u"kept", "");
    fs::create_directories(folder.Path() / "tree" / "sub");
    WriteBytes(Joined(folder / u"tree", u"file"), "");
    for (const int opening : {2, 3})
    {
        const fs::path victim = folder.Path() / (opening == 2 ? "tree" : "tree/sub");
        WriteBytes((victim / "file").u16string(), "");
        SystemCalls calls;
        calls.Before("openat", opening, [&] {
            fs::rename(victim, folder.Path() / ("moved" + std::to_string(opening)));
            fs::create_symlink(outside.Path(), victim);
        });
        EXPECT_NE(CodeOf({folder / u"tree"}), 0);
        EXPECT_TRUE(fs::exists(outside.Path() / "kept"));
        fs::remove(victim);
        fs::rename(folder.Path() / ("moved" + std::to_string(opening)), victim);
    }
}

// Without the check the walk would go up as many folders as were closed, and empty each. So all
// that it could come to is the test's own: the place outside lies deeper than that.
TEST(ShellTree, AFolderThatIsMovedAwayLeadsNobodyOutOfTheTree)
{
    constexpr int levels = 40;
    const TempFolder folder;
    fs::path outside = folder.Path() / "outside";
    for (int i = 0; i < 2 * levels; ++i)
        outside /= "o";
    fs::create_directories(outside);
    WriteBytes((outside / "kept").u16string(), "");
    ASSERT_NO_FATAL_FAILURE(MakeDeepTree(folder.Path() / "deep", levels));
    // The first way back up: eight folders were closed on the way down, all but the empty one at
    // the bottom were opened.
    fs::path moved = folder.Path() / "deep";
    for (int i = 0; i < 8; ++i)
        moved /= "level";
    SystemCalls calls;
    calls.Before("openat", 1 + levels + 1, [&] { fs::rename(moved, outside / "moved"); });
    EXPECT_EQ(CodeOf({folder / u"deep"}), static_cast<int>(ERROR_BUSY));
    EXPECT_TRUE(fs::exists(outside / "kept"));
}

TEST(ShellTree, EntriesThatAListingPassesOverAreLookedForAgain)
{
    const TempFolder folder;
    fs::create_directory(folder.Path() / "tree");
    for (const char16_t* const name : {u"a", u"b", u"c"})
        WriteBytes(Joined(folder / u"tree", name), "");
    SystemCalls calls;
    // Two of the first three may be the folder itself and the one above.
    calls.End("readdir", 4);
    EXPECT_EQ(CodeOf({folder / u"tree"}), 0);
    EXPECT_FALSE(fs::exists(folder.Path() / "tree"));
}

TEST(ShellTree, WhatIsNeverListedEndsTheSearch)
{
    const TempFolder folder;
    fs::create_directory(folder.Path() / "tree");
    WriteBytes(Joined(folder / u"tree", u"a"), "");
    SystemCalls calls;
    calls.End("readdir", 1);
    EXPECT_EQ(CodeOf({folder / u"tree"}), static_cast<int>(ERROR_DIR_NOT_EMPTY));
    EXPECT_TRUE(fs::exists(folder.Path() / "tree" / "a"));
}

TEST(ShellTree, TheSearchGoesOnOnlyAsLongAsItHelps)
{
    const TempFolder folder;
    fs::create_directory(folder.Path() / "tree");
    for (const char16_t* const name : {u"a", u"b", u"c", u"d"})
        WriteBytes(Joined(folder / u"tree", name), "");
    SystemCalls calls;
    // The first time some are listed, the second time none.
    calls.End("readdir", 4);
    calls.End("readdir", 5);
    EXPECT_EQ(CodeOf({folder / u"tree"}), static_cast<int>(ERROR_DIR_NOT_EMPTY));
    EXPECT_FALSE(fs::is_empty(folder.Path() / "tree"));
}

TEST(ShellTree, NoDescriptorGoesToAnotherProgram)
{
    const TempFolder folder;
    fs::create_directory(folder.Path() / "tree");
    WriteBytes(Joined(folder / u"tree", u"a"), "");
    const std::vector<int> before = InheritableDescriptors();
    SystemCalls calls;
    // The third removal is that of the file; the first two were tries on the folder.
    calls.Before("unlinkat", 3, [&] { EXPECT_EQ(InheritableDescriptors(), before); });
    EXPECT_EQ(CodeOf({folder / u"tree"}), 0);
}

TEST(ShellTree, SignalsInterruptNothing)
{
    const TempFolder folder;
    fs::create_directory(folder.Path() / "tree");
    WriteBytes(Joined(folder / u"tree", u"a"), "");
    SystemCalls calls;
    calls.Interrupt("openat");
    EXPECT_EQ(CodeOf({folder / u"tree"}), 0);
    EXPECT_FALSE(fs::exists(folder.Path() / "tree"));
}

TEST(ShellTree, BroadTreeGoes)
{
    const TempFolder folder;
    for (int i = 0; i < 100; ++i)
    {
        const fs::path sub = folder.Path() / "broad" / std::to_string(i);
        fs::create_directories(sub / "below");
        WriteBytes((sub / "file").u16string(), "");
    }
    EXPECT_EQ(CodeOf({folder / u"broad"}), 0);
    EXPECT_FALSE(fs::exists(folder.Path() / "broad"));
}

TEST(ShellTree, OnlyAnEmptyFolderGoesWithoutRecursion)
{
    const TempFolder folder;
    fs::create_directories(folder.Path() / "full" / "sub");
    EXPECT_EQ(CodeOf({folder / u"full"}, silently | FOF_NORECURSION),
              static_cast<int>(ERROR_DIR_NOT_EMPTY));
    EXPECT_TRUE(fs::exists(folder.Path() / "full" / "sub"));
    EXPECT_EQ(CodeOf({Joined(folder / u"full", u"sub")}, silently | FOF_NORECURSION), 0);
}

TEST(ShellTree, RootsAndDotsAreRefused)
{
    const TempFolder folder;
    fs::create_directory(folder.Path() / "sub");
    const std::u16string sub = folder / u"sub";
    for (const std::u16string& path :
         {std::u16string(), std::u16string(u"/"), std::u16string(u"//"), std::u16string(u"."),
          std::u16string(u".."), sub + u"/.", sub + u"/..", sub + u"/../", sub + u"/./"})
    {
        EXPECT_EQ(CodeOf({path}), static_cast<int>(ERROR_INVALID_PARAMETER));
    }
    EXPECT_TRUE(fs::exists(folder.Path() / "sub"));
}

TEST(ShellTree, NothingIsTouchedUnlessTheWholeListIsThere)
{
    const TempFolder folder;
    WriteBytes(folder / u"a", "");
    EXPECT_EQ(CodeOf({folder / u"a", folder / u"none"}), static_cast<int>(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(CodeOf({folder / u"a", u".."}), static_cast<int>(ERROR_INVALID_PARAMETER));
    EXPECT_TRUE(fs::exists(folder.Path() / "a"));
}

TEST(ShellTree, OtherOperationsAreNotSupported)
{
    const TempFolder folder;
    WriteBytes(folder / u"a", "");
    constexpr unsigned other = 0x4;
    EXPECT_EQ(CodeOf({folder / u"a"}, silently | other), static_cast<int>(ERROR_NOT_SUPPORTED));
    SHFILEOPSTRUCTW copy = {};
    copy.wFunc = 2;
    copy.pFrom = u"a\0";
    EXPECT_EQ(SHFileOperationW(&copy), static_cast<int>(ERROR_NOT_SUPPORTED));
    EXPECT_TRUE(fs::exists(folder.Path() / "a"));
}

TEST(ShellIcons, ThereAreNone)
{
    std::int32_t index = 7;
    void* images = nullptr;
    EXPECT_FALSE(FindIcon(u"/", index, images));
    EXPECT_EQ(images, nullptr);
}

} // namespace
} // namespace tarnwell::test
