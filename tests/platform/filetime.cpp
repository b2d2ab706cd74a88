// The times of a file.
#include "platform/filetime.h"
#include "support/opened.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

namespace tarnwell::test
{
namespace
{

// 13 February 2009 23:31:30 and 0.1234567 s.
constexpr std::uint64_t someTicks = 128790414901234567;
// In the year 1949.
constexpr std::uint64_t before1970 = 110'000'000'000'000'000;

class FileTime : public testing::Test
{
protected:
    FileTime()
    {
        WriteBytes(path_, "");
    }

    BOOL SetWriteTime(std::uint64_t ticks)
    {
        const OsHandle file = Opened(path_, FILE_WRITE_ATTRIBUTES, OPEN_EXISTING);
        const FILETIME time = FileTimeOf(ticks);
        return SetFileTime(file.Get(), nullptr, nullptr, &time);
    }

    std::uint64_t WriteTime()
    {
        const OsHandle file = OpenedForReading(path_);
        FILETIME time = {};
        EXPECT_TRUE(GetFileTime(file.Get(), nullptr, nullptr, &time));
        return TimeOf(time);
    }

    TempFolder folder_;
    std::u16string path_ = folder_ / u"file";
};

TEST_F(FileTime, WriteTimeIsKeptToTheTick)
{
    EXPECT_TRUE(SetWriteTime(someTicks));
    EXPECT_EQ(WriteTime(), someTicks);
}

TEST_F(FileTime, TimesBefore1970AreKept)
{
    EXPECT_TRUE(SetWriteTime(before1970 + 1));
    EXPECT_EQ(WriteTime(), before1970 + 1);
}

TEST_F(FileTime, ZeroChangesNothing)
{
    ASSERT_TRUE(SetWriteTime(someTicks));
    EXPECT_TRUE(SetWriteTime(0));
    EXPECT_EQ(WriteTime(), someTicks);
}

TEST_F(FileTime, NullChangesNothing)
{
    ASSERT_TRUE(SetWriteTime(someTicks));
    const OsHandle file = Opened(path_, FILE_WRITE_ATTRIBUTES, OPEN_EXISTING);
    EXPECT_TRUE(SetFileTime(file.Get(), nullptr, nullptr, nullptr));
    EXPECT_EQ(WriteTime(), someTicks);
}

TEST_F(FileTime, AccessTimeIsSetByItself)
{
    ASSERT_TRUE(SetWriteTime(someTicks));
    const FILETIME time = FileTimeOf(someTicks + 10'000'000);
    const OsHandle file = Opened(path_, FILE_WRITE_ATTRIBUTES, OPEN_EXISTING);
    ASSERT_TRUE(SetFileTime(file.Get(), nullptr, &time, nullptr));
    FILETIME access = {};
    FILETIME write = {};
    const OsHandle reader = OpenedForReading(path_);
    ASSERT_TRUE(GetFileTime(reader.Get(), nullptr, &access, &write));
    EXPECT_EQ(TimeOf(access), someTicks + 10'000'000);
    EXPECT_EQ(TimeOf(write), someTicks);
}

TEST_F(FileTime, NewFileIsMadeNowAndAfterAnEarlierOne)
{
    WriteBytes(folder_ / u"later", "");
    const OsHandle later = OpenedForReading(folder_ / u"later");
    FILETIME creation = {};
    FILETIME write = {};
    ASSERT_TRUE(GetFileTime(later.Get(), &creation, nullptr, &write));
    FILETIME now = {};
    ASSERT_EQ(CoFileTimeNow(&now), S_OK);
    EXPECT_GE(TimeOf(creation), WriteTime());
    EXPECT_GE(TimeOf(write), TimeOf(creation));
    EXPECT_GE(TimeOf(now), TimeOf(write));
}

TEST_F(FileTime, FolderHasTimes)
{
    const OsHandle folder =
        Opened(folder_.Text(), GENERIC_READ, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);
    FILETIME write = {};
    EXPECT_TRUE(GetFileTime(folder.Get(), nullptr, nullptr, &write));
    EXPECT_NE(TimeOf(write), 0U);
}

TEST_F(FileTime, InvalidHandleIsRefused)
{
    FILETIME time = FileTimeOf(someTicks);
    EXPECT_EQ(ErrorOf(GetFileTime(INVALID_HANDLE_VALUE, nullptr, nullptr, &time)),
              ERROR_INVALID_HANDLE);
    EXPECT_EQ(ErrorOf(SetFileTime(INVALID_HANDLE_VALUE, nullptr, nullptr, &time)),
              ERROR_INVALID_HANDLE);
}

} // namespace
} // namespace tarnwell::test
