// Permission bits: what they forbid, and what the operations set.
#include "platform/listing.h"
#include "platform/posix/unprivileged.h"
#include "platform/shelldelete.h"
#include "support/opened.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace tarnwell::test
{
namespace
{

class Permissions : public testing::Test
{
protected:
    Permissions()
    {
        Chmod("", 0777);
    }

    std::string Native(const std::string& name) const
    {
        return (folder_.Path() / name).string();
    }
    void Chmod(const std::string& name, mode_t mode) const
    {
        ASSERT_EQ(chmod(Native(name).c_str(), mode), 0);
    }
    mode_t ModeOf(const std::string& name) const
    {
        struct stat entry = {};
        EXPECT_EQ(stat(Native(name).c_str(), &entry), 0);
        return entry.st_mode & 07777;
    }
    // A folder with a file in it.
    void MakeFolder(const std::string& name, mode_t mode) const
    {
        std::filesystem::create_directory(Native(name));
        WriteBytes((folder_.Path() / name / "file").u16string(), "12345");
        Chmod(name, mode);
    }

    TempFolder folder_;
};

TEST_F(Permissions, NewFilesAreMadeAsTheUmaskSays)
{
    const mode_t before = umask(027);
    EXPECT_TRUE(Opened(folder_ / u"a", GENERIC_WRITE, CREATE_NEW));
    EXPECT_TRUE(CreateDirectoryW(Wide(folder_ / u"sub"), nullptr));
    umask(before);
    EXPECT_EQ(ModeOf("a"), 0640U);
    EXPECT_EQ(ModeOf("sub"), 0750U);
}

TEST_F(Permissions, TemporaryFilesAreTheOwnersAlone)
{
    const mode_t before = umask(0);
    EXPECT_TRUE(Opened(folder_ / u"a", GENERIC_WRITE, CREATE_NEW, FILE_ATTRIBUTE_TEMPORARY));
    umask(before);
    EXPECT_EQ(ModeOf("a"), 0600U);
}

TEST_F(Permissions, ReadOnlyIsTheLackOfAnyWriteBit)
{
    WriteBytes(folder_ / u"a", "");
    const auto isReadOnly = [&] {
        return GetFileAttributesW(Wide(folder_ / u"a")) == FILE_ATTRIBUTE_READONLY;
    };
    Chmod("a", 0444);
    EXPECT_TRUE(isReadOnly());
    for (const mode_t mode : {0644U, 0464U, 0446U})
    {
        Chmod("a", mode);
        EXPECT_FALSE(isReadOnly());
    }
}

TEST_F(Permissions, SettingAttributesChangesWriteBitsOnly)
{
    WriteBytes(folder_ / u"a", "");
    Chmod("a", 0776);
    EXPECT_TRUE(SetFileAttributesW(Wide(folder_ / u"a"), FILE_ATTRIBUTE_READONLY));
    EXPECT_EQ(ModeOf("a"), 0554U);
    EXPECT_TRUE(SetFileAttributesW(Wide(folder_ / u"a"), FILE_ATTRIBUTE_HIDDEN));
    EXPECT_EQ(ModeOf("a"), 0754U);
    EXPECT_EQ(GetFileAttributesW(Wide(folder_ / u"a")), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(Permissions, ForbiddenAccessIsDenied)
{
    WriteBytes(folder_ / u"a", "");
    Chmod("a", 0);
    MakeFolder("closed", 0);
    AsNobody([&] {
        for (const DWORD access : {GENERIC_READ, GENERIC_WRITE})
        {
            EXPECT_EQ(ErrorOfOpening(folder_ / u"a", access, OPEN_EXISTING), ERROR_ACCESS_DENIED);
        }
        EXPECT_TRUE(Opened(folder_ / u"a", FILE_READ_ATTRIBUTES, OPEN_EXISTING));
        EXPECT_EQ(ErrorOfOpening(folder_ / u"closed", FILE_LIST_DIRECTORY, OPEN_EXISTING,
                                 FILE_FLAG_BACKUP_SEMANTICS),
                  ERROR_ACCESS_DENIED);
        const std::u16string inside = Joined(folder_ / u"closed", u"file");
        EXPECT_EQ(GetFileAttributesW(Wide(inside)), INVALID_FILE_ATTRIBUTES);
        EXPECT_EQ(GetLastError(), ERROR_ACCESS_DENIED);
        EXPECT_EQ(ErrorOf(DeleteFileW(Wide(inside))), ERROR_ACCESS_DENIED);
        EXPECT_EQ(List(Joined(folder_ / u"closed", u"*")).error, ERROR_ACCESS_DENIED);
    });
}

TEST_F(Permissions, OtherPeoplesFilesCannotBeChanged)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only root can make a file of somebody else's";
    WriteBytes(folder_ / u"a", "");
    AsNobody([&] {
        EXPECT_EQ(ErrorOf(SetFileAttributesW(Wide(folder_ / u"a"), FILE_ATTRIBUTE_NORMAL)),
                  ERROR_ACCESS_DENIED);
        const OsHandle file = Opened(folder_ / u"a", FILE_WRITE_ATTRIBUTES, OPEN_EXISTING);
        const FILETIME time{0, 0x01C00000};
        EXPECT_EQ(ErrorOf(SetFileTime(file.Get(), nullptr, nullptr, &time)), ERROR_ACCESS_DENIED);
    });
}

TEST_F(Permissions, TimesOfAnUnreadableFileCanBeSet)
{
    AsNobody([&] {
        EXPECT_TRUE(Opened(folder_ / u"own", GENERIC_WRITE, CREATE_NEW));
        Chmod("own", 0);
        const FILETIME time{0, 0x01C00000};
        {
            const OsHandle file = Opened(folder_ / u"own", FILE_WRITE_ATTRIBUTES, OPEN_EXISTING);
            EXPECT_TRUE(SetFileTime(file.Get(), nullptr, nullptr, &time));
            char byte = 0;
            DWORD moved = 0;
            EXPECT_EQ(ErrorOf(ReadFile(file.Get(), &byte, 1, &moved, nullptr)),
                      ERROR_ACCESS_DENIED);
        }
        Chmod("own", 0444);
        FILETIME write = {};
        EXPECT_TRUE(
            GetFileTime(OpenedForReading(folder_ / u"own").Get(), nullptr, nullptr, &write));
        EXPECT_EQ(write.dwHighDateTime, time.dwHighDateTime);
        EXPECT_EQ(write.dwLowDateTime, 0U);
    });
}

TEST_F(Permissions, EntriesThatCannotBeReadAreListedWithoutFacts)
{
    MakeFolder("listable", 0700);
    std::filesystem::create_directory(folder_.Path() / "listable" / "sub");
    Chmod("listable", 0444);
    AsNobody([&] {
        const Listing listing = List(Joined(folder_ / u"listable", u"*"));
        EXPECT_EQ(listing.error, ERROR_NO_MORE_FILES);
        EXPECT_EQ(listing.records.size(), 4U);
        const WIN32_FIND_DATAW* const file = listing.Find(u"file");
        const WIN32_FIND_DATAW* const sub = listing.Find(u"sub");
        ASSERT_TRUE(file != nullptr && sub != nullptr);
        EXPECT_EQ(SizeOf(*file), 0U);
        EXPECT_EQ(WriteTimeOf(*file), 0U);
        EXPECT_EQ(file->dwFileAttributes, FILE_ATTRIBUTE_NORMAL);
        EXPECT_EQ(sub->dwFileAttributes, FILE_ATTRIBUTE_DIRECTORY);
    });
}

TEST_F(Permissions, ShellDeleteFailsOnWhatItMayNotEnter)
{
    MakeFolder("closed", 0);
    AsNobody([&] {
        EXPECT_EQ(ShellDelete({folder_ / u"closed"}, silently).code,
                  static_cast<int>(ERROR_ACCESS_DENIED));
    });
    Chmod("closed", 0700);
    EXPECT_TRUE(std::filesystem::exists(folder_.Path() / "closed" / "file"));
}

} // namespace
} // namespace tarnwell::test
