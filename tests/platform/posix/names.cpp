// Names as bytes, and what means something elsewhere.
#include "platform/listing.h"
#include "platform/shelldelete.h"
#include "support/opened.h"
#include "support/tempfolder.h"

#include <tarnwell/text.h>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

namespace tarnwell::test
{
namespace
{

class Names : public testing::Test
{
protected:
    void Make(const std::string& bytes)
    {
        const int file =
            open((folder_.Path() / bytes).c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0644);
        ASSERT_GE(file, 0);
        close(file);
    }

    TempFolder folder_;
};

TEST_F(Names, BytesThatAreNoTextAreListedOpenedAndDeleted)
{
    const std::string bytes = "a\xFF\xE4z\xED\xA0\x80";
    Make(bytes);
    const std::u16string name = u"a\xDCFF\xDCE4z\xDCED\xDCA0\xDC80";
    EXPECT_NE(List(folder_ / u"*").Find(name), nullptr);
    EXPECT_TRUE(OpenedForReading(folder_ / name));
    EXPECT_EQ(GetFileAttributesW(Wide(folder_ / name)), FILE_ATTRIBUTE_NORMAL);
    EXPECT_TRUE(DeleteFileW(Wide(folder_ / name)));
    EXPECT_EQ(List(folder_ / u"*").records.size(), 2U);
}

TEST_F(Names, LoneSurrogatesNameNothing)
{
    for (const char16_t* const name : {u"a\xD800", u"\xDC00", u"\xDC7F", u"\xDD00"})
    {
        const std::u16string path = folder_ / name;
        EXPECT_EQ(ErrorOfOpening(path, GENERIC_READ, OPEN_EXISTING), ERROR_INVALID_NAME);
        EXPECT_EQ(ErrorOfOpening(path, GENERIC_WRITE, CREATE_NEW), ERROR_INVALID_NAME);
        EXPECT_EQ(GetFileAttributesW(Wide(path)), INVALID_FILE_ATTRIBUTES);
        EXPECT_EQ(GetLastError(), ERROR_INVALID_NAME);
        EXPECT_EQ(ErrorOf(CreateDirectoryW(Wide(path), nullptr)), ERROR_INVALID_NAME);
        EXPECT_EQ(ErrorOf(DeleteFileW(Wide(path))), ERROR_INVALID_NAME);
        EXPECT_EQ(List(path).error, ERROR_INVALID_NAME);
        EXPECT_EQ(ShellDelete({path}, silently).code, static_cast<int>(ERROR_INVALID_NAME));
    }
}

TEST_F(Names, BackslashColonAndWildcardAreLetters)
{
    for (const std::string name : {"a\\b", "c:", "x:stream", "q?", "*.txt"})
    {
        Make(name);
        const std::u16string path = folder_ / DecodeName(name);
        EXPECT_TRUE(OpenedForReading(path)) << name;
        EXPECT_EQ(List(path).Names(), std::vector{DecodeName(name)}) << name;
    }
    EXPECT_EQ(ShellDelete({folder_ / u"*.txt"}, silently).code, 0);
    EXPECT_EQ(List(folder_ / u"*").records.size(), 2U + 4U);
}

TEST_F(Names, DotFilesAreHidden)
{
    Make(".dot");
    Make("a.b");
    const Listing listing = List(folder_ / u"*");
    EXPECT_EQ(listing.Find(u".dot")->dwFileAttributes, FILE_ATTRIBUTE_HIDDEN);
    EXPECT_EQ(listing.Find(u"a.b")->dwFileAttributes, FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(listing.Find(u".")->dwFileAttributes, FILE_ATTRIBUTE_DIRECTORY);
    EXPECT_EQ(listing.Find(u"..")->dwFileAttributes, FILE_ATTRIBUTE_DIRECTORY);
    EXPECT_EQ(GetFileAttributesW(Wide(folder_ / u".dot")), FILE_ATTRIBUTE_HIDDEN);
}

TEST_F(Names, LongestNamesAreKept)
{
    const std::string ascii(255, 'n');
    std::string wide;
    for (int i = 0; i < 85; ++i)
        wide += "\u65e5";
    Make(ascii);
    Make(wide);
    const Listing listing = List(folder_ / u"*");
    EXPECT_NE(listing.Find(DecodeName(ascii)), nullptr);
    EXPECT_NE(listing.Find(DecodeName(wide)), nullptr);
    const std::u16string tooLong = folder_ / std::u16string(256, u'n');
    EXPECT_EQ(ErrorOfOpening(tooLong, GENERIC_READ, OPEN_EXISTING), ERROR_FILENAME_EXCED_RANGE);
}

TEST_F(Names, FolderWithoutSeparatorIsTheCurrentOne)
{
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder_.Path());
    Make("here");
    EXPECT_NE(List(u"*").Find(u"here"), nullptr);
    EXPECT_EQ(ErrorOfOpening(u"none", GENERIC_READ, OPEN_EXISTING), ERROR_FILE_NOT_FOUND);
    std::filesystem::current_path(before);
}

TEST_F(Names, RootCanBeListedButIsNoEntry)
{
    EXPECT_NE(List(u"/*").Find(u"proc"), nullptr);
    EXPECT_EQ(List(u"/").error, ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(GetFileAttributesW(u"/") & FILE_ATTRIBUTE_DIRECTORY, FILE_ATTRIBUTE_DIRECTORY);
}

} // namespace
} // namespace tarnwell::test
