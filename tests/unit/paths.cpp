// Paths as text, by both platforms' rules on both platforms.
#include "frame/paths.h"

#include <gmock/gmock.h>

namespace tarnwell::test
{

namespace
{

constexpr const PathRules& windows = windowsPathRules;
constexpr const PathRules& posix = posixPathRules;

struct PathRow
{
    const PathRules& rules;
    std::u16string_view path;
    std::size_t leafOffset;
    std::u16string_view leaf;
    std::u16string_view parent;
    std::u16string_view appended; // the path made ready for a name
};

constexpr PathRow pathRows[] = {
    {windows, u"", 0, u"", u"", u""},
    {windows, u"notes.txt", 0, u"notes.txt", u"", u"notes.txt\\"},
    {windows, u".", 0, u".", u"", u".\\"},
    {windows, u"C:\\", 3, u"", u"C:\\", u"C:\\"},
    {windows, u"C:/", 3, u"", u"C:/", u"C:/"},
    {windows, u"C:\\a", 3, u"a", u"C:\\", u"C:\\a\\"},
    {windows, u"C:\\a\\b", 5, u"b", u"C:\\a", u"C:\\a\\b\\"},
    {windows, u"C:/a/b", 5, u"b", u"C:/a", u"C:/a/b\\"},
    {windows, u"C:\\a/b", 5, u"b", u"C:\\a", u"C:\\a/b\\"},
    {windows, u"C:\\a\\", 5, u"", u"C:\\a", u"C:\\a\\"},
    {windows, u"C:\\a\\/\\b", 7, u"b", u"C:\\a", u"C:\\a\\/\\b\\"},
    {windows, u"C:\\\\a", 4, u"a", u"C:\\", u"C:\\\\a\\"},
    {windows, u"C:", 2, u"", u"C:", u"C:"},
    {windows, u"C:file", 2, u"file", u"C:", u"C:file\\"},
    {windows, u"1:file", 2, u"file", u"1:", u"1:file\\"},
    {windows, u":file", 0, u":file", u"", u":file\\"},
    {windows, u"C:\\a.txt:s1", 3, u"a.txt:s1", u"C:\\", u"C:\\a.txt:s1\\"},
    {windows, u"\\a", 1, u"a", u"\\", u"\\a\\"},
    {windows, u"\\", 1, u"", u"\\", u"\\"},
    {windows, u"a:", 2, u"", u"a:", u"a:"},
    {windows, u"file:", 0, u"file:", u"", u"file:"},
    {windows, u"\\\\server\\share\\a", 15, u"a", u"\\\\server\\share", u"\\\\server\\share\\a\\"},
    {windows, u"\\\\?\\C:\\", 7, u"", u"\\\\?\\C:\\", u"\\\\?\\C:\\"},
    {windows, u"\\\\?\\C:\\a", 7, u"a", u"\\\\?\\C:\\", u"\\\\?\\C:\\a\\"},
    {windows, u"\\\\?\\C:\\a\\b", 9, u"b", u"\\\\?\\C:\\a", u"\\\\?\\C:\\a\\b\\"},

    {posix, u"", 0, u"", u"", u""},
    {posix, u"notes.txt", 0, u"notes.txt", u"", u"notes.txt/"},
    {posix, u"/", 1, u"", u"/", u"/"},
    {posix, u"/a", 1, u"a", u"/", u"/a/"},
    {posix, u"/a/b", 3, u"b", u"/a", u"/a/b/"},
    {posix, u"/a/", 3, u"", u"/a", u"/a/"},
    {posix, u"/a///b", 5, u"b", u"/a", u"/a///b/"},
    {posix, u"//a", 2, u"a", u"/", u"//a/"},
    {posix, u"C:file", 0, u"C:file", u"", u"C:file/"},
    {posix, u"C:", 0, u"C:", u"", u"C:/"},
    {posix, u"/a\\b", 1, u"a\\b", u"/", u"/a\\b/"},
    {posix, u"/a/b\\", 3, u"b\\", u"/a", u"/a/b\\/"},
};

TEST(Paths, LeafBeginsBehindTheLastSeparator)
{
    for (const PathRow& row : pathRows)
    {
        EXPECT_EQ(FindLeafOffset(row.path, row.rules), row.leafOffset)
            << testing::PrintToString(row.path);
        EXPECT_EQ(LeafNameOf(row.path, row.rules), row.leaf);
    }
}

TEST(Paths, ParentFolderHasNoSeparatorAtItsEndUnlessItIsARoot)
{
    for (const PathRow& row : pathRows)
        EXPECT_EQ(ParentFolderOf(row.path, row.rules), row.parent)
            << testing::PrintToString(row.path);
}

TEST(Paths, SeparatorIsAppendedWhereItIsMissing)
{
    for (const PathRow& row : pathRows)
    {
        std::u16string path(row.path);
        AppendSeparator(path, row.rules);
        EXPECT_EQ(path, row.appended);
    }
}

struct RootRow
{
    const PathRules& rules;
    std::u16string_view path;
    bool root;
};

constexpr RootRow rootRows[] = {
    {windows, u"C:\\", true},
    {windows, u"z:/", true},
    {windows, u"\\\\?\\C:\\", true},
    {windows, u"\\\\?\\C:/", true},
    {windows, u"", false},
    {windows, u"C:", false},
    {windows, u"C:\\\\", false},
    {windows, u"C:\\a", false},
    {windows, u"1:\\", false},
    {windows, u"@:\\", false},
    {windows, u"[:\\", false},
    {windows, u"`:\\", false},
    {windows, u"{:\\", false},
    {windows, u"\u00E9:\\", false},
    {windows, u"\\", false},
    {windows, u"/", false},
    {windows, u"\\\\?\\", false},
    {windows, u"\\\\?\\C:", false},
    {windows, u"\\\\?\\C:\\a", false},
    {windows, u"//?/C:/", false},
    {windows, u"\\\\server\\share\\", false},
    {posix, u"/", true},
    {posix, u"", false},
    {posix, u"//", false},
    {posix, u"/a", false},
    {posix, u"\\", false},
    {posix, u"C:/", false},
};

TEST(Paths, RootsAreExactlyDrivesOrTheOneSlash)
{
    for (const RootRow& row : rootRows)
        EXPECT_EQ(IsRootPath(row.path, row.rules), row.root) << testing::PrintToString(row.path);
}

struct DropRow
{
    const PathRules& rules;
    std::u16string_view parent;
    std::u16string_view dropped;
};

constexpr DropRow dropRows[] = {
    {windows, u"C:\\a\\", u"C:\\a"},
    {windows, u"C:\\a/", u"C:\\a"},
    {windows, u"C:\\a\\\\", u"C:\\a\\"},
    {windows, u"C:\\", u"C:\\"},
    {windows, u"C:", u"C:"},
    {windows, u"\\", u"\\"},
    {windows, u"", u""},
    {windows, u"\\\\?\\C:\\", u"\\\\?\\C:\\"},
    {windows, u"\\\\server\\share\\", u"\\\\server\\share"},
    {windows, u"a\\", u"a"},
    {posix, u"/a/", u"/a"},
    {posix, u"/a//", u"/a/"},
    {posix, u"/", u"/"},
    {posix, u"", u""},
    {posix, u"a\\", u"a\\"},
};

TEST(Paths, OneSeparatorIsDroppedAndNothingElse)
{
    for (const DropRow& row : dropRows)
        EXPECT_EQ(DropLastSeparator(row.parent, row.rules), row.dropped);
}

TEST(Paths, SeparatorsAreTheRulesOwn)
{
    EXPECT_TRUE(IsSeparator(u'\\', windows));
    EXPECT_TRUE(IsSeparator(u'/', windows));
    EXPECT_FALSE(IsSeparator(u':', windows));
    EXPECT_TRUE(IsSeparator(u'/', posix));
    EXPECT_FALSE(IsSeparator(u'\\', posix));
    EXPECT_FALSE(IsSeparator(u':', posix));
}

// What another machine tells may be a path of yet another one.
TEST(LocalPaths, BeginAtADriveOrAtTheRoot)
{
    for (const std::u16string_view path : {u"C:\\", u"c:/a", u"Z:\\a\\b"})
        EXPECT_TRUE(IsLocalPath(path, windows)) << testing::PrintToString(path);
    for (const std::u16string_view path :
         {u"", u"a", u"C:", u"C:a", u"1:\\a", u"\\a", u"/a", u"\\\\server\\share\\a",
          u"//server/share", u"\\/server\\share", u"\\\\?\\C:\\a", u"\\\\.\\C:\\a", u"\\??\\C:\\a",
          u"\\\\?\\UNC\\server\\share"})
        EXPECT_FALSE(IsLocalPath(path, windows)) << testing::PrintToString(path);
    EXPECT_TRUE(IsLocalPath(u"/a", posix));
    for (const std::u16string_view path : {u"", u"a", u".", u"../a", u"C:\\a", u"\\a"})
        EXPECT_FALSE(IsLocalPath(path, posix)) << testing::PrintToString(path);
}

} // namespace

} // namespace tarnwell::test
