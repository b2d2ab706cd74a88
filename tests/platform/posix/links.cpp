// Symbolic links, with and without a target.
#include "platform/filetime.h"
#include "platform/listing.h"
#include "platform/shelldelete.h"
#include "support/opened.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;

class Links : public testing::Test
{
protected:
    Links()
    {
        WriteBytes(folder_ / u"file", "12345");
        fs::create_directory(folder_.Path() / "sub");
        WriteBytes((folder_.Path() / "sub" / "inside").u16string(), "x");
        Link("file", "tofile");
        Link("sub", "tosub");
        Link("none", "dangling");
        Link("loop", "loop");
        Link("file/x", "through");
        Link(std::string(300, 'n'), "overlong");
    }

    void Link(const std::string& target, const char* name)
    {
        fs::create_symlink(target, folder_.Path() / name);
    }
    // Of the link and not of what it leads to.
    std::uint64_t OwnTimeOf(const std::u16string& name)
    {
        constexpr std::uint64_t ticksUntil1970 = 116444736000000000;
        struct stat entry = {};
        EXPECT_EQ(lstat(fs::path(folder_ / name).c_str(), &entry), 0);
        return ticksUntil1970 + static_cast<std::uint64_t>(entry.st_mtim.tv_sec) * 10000000 +
               static_cast<std::uint64_t>(entry.st_mtim.tv_nsec) / 100;
    }
    bool Exists(const char* name)
    {
        return fs::exists(fs::symlink_status(folder_.Path() / name));
    }

    TempFolder folder_;
    // To nothing, to themselves, through a file, and to what can be no name.
    const std::vector<std::u16string> leadingNowhere_{u"dangling", u"loop", u"through",
                                                      u"overlong"};
};

TEST_F(Links, ShowTheirTargetsKind)
{
    const auto attributes = [&](const std::u16string& name) {
        return GetFileAttributesW(Wide(folder_ / name));
    };
    EXPECT_EQ(attributes(u"tofile"), FILE_ATTRIBUTE_REPARSE_POINT);
    EXPECT_EQ(attributes(u"tosub"), FILE_ATTRIBUTE_REPARSE_POINT | FILE_ATTRIBUTE_DIRECTORY);
    for (const std::u16string& name : leadingNowhere_)
        EXPECT_EQ(attributes(name), FILE_ATTRIBUTE_REPARSE_POINT);
}

TEST_F(Links, AreListedWithTheirTargetsFacts)
{
    const Listing listing = List(folder_ / u"*");
    EXPECT_EQ(listing.records.size(), 10U);
    const WIN32_FIND_DATAW* const file = listing.Find(u"file");
    const WIN32_FIND_DATAW* const toFile = listing.Find(u"tofile");
    ASSERT_TRUE(file != nullptr && toFile != nullptr);
    EXPECT_EQ(SizeOf(*toFile), 5U);
    EXPECT_EQ(WriteTimeOf(*toFile), WriteTimeOf(*file));
    EXPECT_EQ(toFile->dwFileAttributes, FILE_ATTRIBUTE_REPARSE_POINT);
    EXPECT_EQ(listing.Find(u"tosub")->dwFileAttributes,
              FILE_ATTRIBUTE_REPARSE_POINT | FILE_ATTRIBUTE_DIRECTORY);
    EXPECT_EQ(SizeOf(*listing.Find(u"tosub")), 0U);
}

TEST_F(Links, WithoutATargetAreListedWithTheirOwnTime)
{
    const Listing listing = List(folder_ / u"*");
    for (const std::u16string& name : leadingNowhere_)
    {
        const WIN32_FIND_DATAW* const link = listing.Find(name);
        ASSERT_NE(link, nullptr);
        EXPECT_EQ(link->dwFileAttributes, FILE_ATTRIBUTE_REPARSE_POINT);
        EXPECT_EQ(SizeOf(*link), 0U);
        EXPECT_EQ(WriteTimeOf(*link), OwnTimeOf(name));
    }
}

TEST_F(Links, AreFoundByThemselves)
{
    const Listing link = List(folder_ / u"tofile");
    ASSERT_EQ(link.records.size(), 1U);
    EXPECT_EQ(SizeOf(link.records[0]), 5U);
    EXPECT_EQ(link.records[0].dwFileAttributes, FILE_ATTRIBUTE_REPARSE_POINT);
    EXPECT_EQ(List(folder_ / u"dangling").records.size(), 1U);
}

TEST_F(Links, WithoutATargetOpenForALookupOnly)
{
    for (const std::u16string& name : leadingNowhere_)
    {
        const OsHandle link =
            Opened(folder_ / name, GENERIC_READ, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);
        ASSERT_TRUE(link);
        FILETIME write = {};
        EXPECT_TRUE(GetFileTime(link.Get(), nullptr, nullptr, &write));
        EXPECT_EQ(TimeOf(write), OwnTimeOf(name));
        LONG high = 0;
        EXPECT_EQ(SetFilePointer(link.Get(), 0, &high, FILE_END), INVALID_SET_FILE_POINTER);
        EXPECT_NE(GetLastError(), ERROR_SUCCESS);
    }
    const auto error = [&](const char16_t* name) {
        return ErrorOfOpening(folder_ / name, GENERIC_READ, OPEN_EXISTING);
    };
    EXPECT_EQ(error(u"dangling"), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(error(u"loop"), ERROR_CANT_RESOLVE_FILENAME);
    EXPECT_EQ(error(u"through"), ERROR_PATH_NOT_FOUND);
    EXPECT_EQ(error(u"overlong"), ERROR_FILENAME_EXCED_RANGE);
}

TEST_F(Links, ToFilesAreDeletedAndToFoldersRefused)
{
    EXPECT_TRUE(DeleteFileW(Wide(folder_ / u"tofile")));
    EXPECT_FALSE(Exists("tofile"));
    EXPECT_TRUE(Exists("file"));
    EXPECT_TRUE(DeleteFileW(Wide(folder_ / u"dangling")));
    EXPECT_FALSE(Exists("dangling"));
    EXPECT_EQ(ErrorOf(DeleteFileW(Wide(folder_ / u"tosub"))), ERROR_ACCESS_DENIED);
    EXPECT_TRUE(Exists("tosub"));
}

TEST_F(Links, ToReadOnlyFilesAreDeleted)
{
    ASSERT_TRUE(SetFileAttributesW(Wide(folder_ / u"file"), FILE_ATTRIBUTE_READONLY));
    EXPECT_TRUE(DeleteFileW(Wide(folder_ / u"tofile")));
    EXPECT_TRUE(Exists("file"));
}

TEST_F(Links, AreRemovedByTheShellAndNeverFollowed)
{
    fs::create_directory(folder_.Path() / "tree");
    fs::create_symlink("../sub", folder_.Path() / "tree" / "tosub");
    const std::u16string withSeparator = (folder_ / u"tosub") + u"/";
    EXPECT_EQ(ShellDelete({withSeparator, folder_ / u"dangling", folder_ / u"tree"}, silently).code,
              0);
    EXPECT_FALSE(Exists("tosub"));
    EXPECT_FALSE(Exists("dangling"));
    EXPECT_FALSE(Exists("tree"));
    EXPECT_TRUE(Exists("sub/inside"));
}

TEST_F(Links, AreNotFollowedByFilesThatGoAway)
{
    EXPECT_EQ(
        ErrorOfOpening(folder_ / u"tofile", GENERIC_READ, OPEN_EXISTING, FILE_FLAG_DELETE_ON_CLOSE),
        ERROR_CANT_RESOLVE_FILENAME);
    EXPECT_TRUE(Exists("tofile"));
    EXPECT_TRUE(Exists("file"));
}

} // namespace
} // namespace tarnwell::test
