// Paths that name a data stream, and the part of a path that can't be created.
#include "frame/paths.h"

#include <gmock/gmock.h>

namespace tarnwell::test
{

namespace
{

struct SplitRow
{
    std::u16string_view path;
    std::u16string_view file;
    std::u16string_view stream;
};

constexpr SplitRow splitRows[] = {
    {u"C:\\a\\b.txt:s1", u"C:\\a\\b.txt", u"s1"},
    {u"ab:cd", u"ab", u"cd"},
    {u"C:\\a.txt:s:$DATA", u"C:\\a.txt:s", u"$DATA"},
    {u"C:\\a.txt:", u"C:\\a.txt", u""},
    {u"C:a:b", u"C:a", u"b"},
    {u"C::x", u"C:", u"x"},
};

TEST(StreamPaths, SplitAtTheLastColon)
{
    for (const SplitRow& row : splitRows)
    {
        const auto split = SplitStreamPath(row.path, windowsPathRules);
        ASSERT_TRUE(split) << testing::PrintToString(row.path);
        EXPECT_EQ(split->file, row.file);
        EXPECT_EQ(split->stream, row.stream);
    }
}

TEST(StreamPaths, SomeColonsDoNotSplit)
{
    for (const std::u16string_view path : {u"", u"plain", u"C:\\a", u"x:y", u"x:", u":y",
                                           u"C:\\a:b\\c", u"C:\\a:b/c", u"\\\\?\\C:\\a", u"C:"})
        EXPECT_FALSE(SplitStreamPath(path, windowsPathRules)) << testing::PrintToString(path);
}

TEST(StreamPaths, AColonIsPartOfANameWhereThereAreNoStreams)
{
    for (const SplitRow& row : splitRows)
        EXPECT_FALSE(SplitStreamPath(row.path, posixPathRules)) << testing::PrintToString(row.path);
}

struct CreatableRow
{
    const PathRules& rules;
    std::u16string_view path;
    std::size_t offset;
};

constexpr CreatableRow creatableRows[] = {
    {windowsPathRules, u"", 0},
    {windowsPathRules, u"a\\b", 0},
    {windowsPathRules, u"C:\\a\\b", 3},
    {windowsPathRules, u"C:/a", 3},
    {windowsPathRules, u"C:\\\\a", 3},
    {windowsPathRules, u"C:a", 2},
    {windowsPathRules, u"C:", 2},
    {windowsPathRules, u"1:\\a", 0},
    {windowsPathRules, u"\\a", 1},
    {windowsPathRules, u"/a", 1},
    {windowsPathRules, u"\\\\server\\share\\a\\b", 15},
    {windowsPathRules, u"//server/share/a", 15},
    {windowsPathRules, u"\\/server\\share\\a", 15},
    {windowsPathRules, u"\\\\server\\share\\", 15},
    {windowsPathRules, u"\\\\server\\share", 14},
    {windowsPathRules, u"\\\\server", 8},
    {windowsPathRules, u"\\\\", 2},
    {windowsPathRules, u"\\\\?\\C:\\a", 7},
    {posixPathRules, u"", 0},
    {posixPathRules, u"a/b", 0},
    {posixPathRules, u"/a/b", 1},
    {posixPathRules, u"//a/b", 2},
    {posixPathRules, u"///", 3},
    {posixPathRules, u"C:\\a", 0},
    {posixPathRules, u"\\\\server\\share\\a", 0},
};

TEST(CreatablePart, BeginsBehindShareDriveOrSeparator)
{
    for (const CreatableRow& row : creatableRows)
        EXPECT_EQ(FirstCreatableOffset(row.path, row.rules), row.offset)
            << testing::PrintToString(row.path);
}

} // namespace

} // namespace tarnwell::test
