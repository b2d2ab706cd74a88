// Which live item a path means, and on which drive that is.
#include "local/snapshotpaths.h"

#include <gtest/gtest.h>

namespace tarnwell::test
{
namespace
{

std::u16string Normalized(std::u16string_view path)
{
    return NormalizeRevisionPath(path).value_or(u"(plain)");
}

TEST(RevisionPath, AnExtendedLengthPathLosesItsPrefix)
{
    EXPECT_EQ(Normalized(u"\\\\?\\C:\\dir\\file.txt"), u"C:\\dir\\file.txt");
    EXPECT_EQ(Normalized(u"\\\\?\\UNC\\server\\share"), u"UNC\\server\\share");
    EXPECT_EQ(Normalized(u"\\\\?\\"), u"");
    EXPECT_EQ(Normalized(u"//?/C:/dir"), u"(plain)");
}

TEST(RevisionPath, APrefixHidesTheSnapshotBehindIt)
{
    EXPECT_EQ(Normalized(u"\\\\?\\\\\\localhost\\C$\\@GMT-2024.05.01-10.30.00\\a"),
              u"\\\\localhost\\C$\\@GMT-2024.05.01-10.30.00\\a");
}

TEST(RevisionPath, ASnapshotsPathMeansTheLiveFile)
{
    EXPECT_EQ(Normalized(u"\\\\localhost\\C$\\@GMT-2024.05.01-10.30.00\\dir\\file.txt"),
              u"C:\\dir\\file.txt");
    EXPECT_EQ(Normalized(u"\\\\localhost\\c$\\@gmt-2024.05.01-10.30.00\\dir\\file.txt"),
              u"c:\\dir\\file.txt");
    EXPECT_EQ(Normalized(u"\\\\LOCALHOST\\z$\\@GMT-9999.99.99-99.99.99\\"), u"z:\\");
    EXPECT_EQ(Normalized(u"\\\\localhost\\C$\\@GMT-2024.05.01-10.30.00\\\u65e5\U0001F600/x"),
              u"C:\\\u65e5\U0001F600/x");
}

TEST(RevisionPath, ASnapshotsPathIsFoundAnywhere)
{
    EXPECT_EQ(Normalized(u"ab\\\\localhost\\C$\\@GMT-2024.05.01-10.30.00\\file"), u"C:\\file");
    EXPECT_EQ(Normalized(u"\\\\localhost\\C$\\@GMT-2024.05.01-10.30.00\\a\nb"), u"C:\\a")
        << "what is captured ends with the line";
}

TEST(RevisionPath, AnyOtherPathIsPlain)
{
    for (const std::u16string_view path :
         {u"", u"C:\\dir\\file.txt", u"file.txt", u"\\\\server\\share\\file.txt",
          u"\\\\localhost\\C$\\dir\\file.txt",
          // Not quite a snapshot's.
          u"\\\\localhost\\C$\\@GMT-2024.05.01-10.30.00",
          u"\\\\localhost\\C\\@GMT-2024.05.01-10.30.00\\a",
          u"\\\\localhost\\CD$\\@GMT-2024.05.01-10.30.00\\a",
          u"\\\\localhost\\1$\\@GMT-2024.05.01-10.30.00\\a",
          u"\\localhost\\C$\\@GMT-2024.05.01-10.30.00\\a",
          u"\\\\server\\C$\\@GMT-2024.05.01-10.30.00\\a",
          u"\\\\localhost\\C$\\@GMT-2024.05.01-10.30.0\\a",
          u"\\\\localhost\\C$\\@GMT-24.05.01-10.30.00\\a",
          u"\\\\localhost\\C$\\@GMT-2024-05-01-10.30.00\\a",
          u"\\\\localhost\\C$\\@GMT-2024.05.01-10:30.00\\a",
          u"\\\\localhost\\C$\\@GMT-2024.05.01-10.30.00/a",
          u"\\\\localhost\\C$/@GMT-2024.05.01-10.30.00\\a"})
        EXPECT_EQ(NormalizeRevisionPath(path), std::nullopt);
}

struct Split
{
    std::u16string_view path;
    char16_t letter;
    std::u16string_view rest;
};

const Split splits[] = {
    {u"C:\\dir\\file.txt", u'C', u"dir\\file.txt"},
    {u"C:/dir/file.txt", u'C', u"dir/file.txt"},
    {u"z:\\", u'z', u""},
    {u"A:\\\\x", u'A', u"\\x"},
    {u"\\\\?\\C:\\dir", u'C', u"dir"},
    {u"\\\\?\\c:/dir", u'c', u"dir"},
    {u"\\\\?\\C:\\", u'C', u""},
};

TEST(PathOfADrive, HasALetterAndARest)
{
    for (const Split& split : splits)
    {
        const std::optional<DrivePath> found = SplitDrivePath(split.path);
        ASSERT_TRUE(found);
        EXPECT_EQ(found->letter, split.letter);
        EXPECT_EQ(found->rest, split.rest);
    }
}

TEST(PathOfADrive, BeginsAtTheRoot)
{
    for (const std::u16string_view path : {u"",
                                           u"C",
                                           u"C:",
                                           u"C:x",
                                           u"1:\\x",
                                           u"@:\\x",
                                           u"[:\\x",
                                           u"`:\\x",
                                           u"{:\\x",
                                           u"\u00e4:\\x",
                                           u"CC:\\x",
                                           u":\\x",
                                           u"\\x",
                                           u"/x",
                                           u"x/y",
                                           u"\\\\server\\share\\file.txt",
                                           u"\\\\localhost\\C$\\file.txt",
                                           u"\\\\?\\",
                                           u"\\\\?\\C:",
                                           u"\\\\?\\C:x",
                                           u"\\\\?\\UNC\\server\\share",
                                           u"//?/C:/x",
                                           u"\\\\.\\C:\\x"})
        EXPECT_FALSE(SplitDrivePath(path));
}

} // namespace
} // namespace tarnwell::test
