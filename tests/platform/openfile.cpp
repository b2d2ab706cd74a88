// CreateFileW and CloseHandle.
#include "support/opened.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

namespace tarnwell::test
{
namespace
{

constexpr DWORD everything = GENERIC_READ | GENERIC_WRITE;

TEST(OpenFile, MissingFileIsToldFromMissingFolder)
{
    const TempFolder folder;
    EXPECT_EQ(ErrorOfOpening(folder / u"none", GENERIC_READ, OPEN_EXISTING), ERROR_FILE_NOT_FOUND);
    const std::u16string below = Joined(folder / u"none", u"a");
    EXPECT_EQ(ErrorOfOpening(below, GENERIC_READ, OPEN_EXISTING), ERROR_PATH_NOT_FOUND);
    EXPECT_EQ(ErrorOfOpening(below, GENERIC_WRITE, CREATE_NEW), ERROR_PATH_NOT_FOUND);
}

TEST(OpenFile, FileInTheWayIsAMissingFolder)
{
    const TempFolder folder;
    WriteBytes(folder / u"file", "");
    const std::u16string below = Joined(folder / u"file", u"a");
    EXPECT_EQ(ErrorOfOpening(below, GENERIC_READ, OPEN_EXISTING), ERROR_PATH_NOT_FOUND);
}

TEST(OpenFile, EmptyPathIsAMissingFolder)
{
    EXPECT_EQ(ErrorOfOpening(u"", GENERIC_READ, OPEN_EXISTING), ERROR_PATH_NOT_FOUND);
}

TEST(OpenFile, CreateNewRefusesWhatExists)
{
    const TempFolder folder;
    EXPECT_TRUE(Opened(folder / u"a", GENERIC_WRITE, CREATE_NEW));
    EXPECT_EQ(ErrorOfOpening(folder / u"a", GENERIC_WRITE, CREATE_NEW), ERROR_FILE_EXISTS);
}

TEST(OpenFile, CreateAlwaysEmptiesTheFile)
{
    const TempFolder folder;
    WriteBytes(folder / u"a", "old");
    EXPECT_TRUE(Opened(folder / u"a", GENERIC_WRITE, CREATE_ALWAYS));
    EXPECT_EQ(ReadBytes(folder / u"a"), "");
}

TEST(OpenFile, CreateAlwaysEmptiesAFileThatAnotherReads)
{
    const TempFolder folder;
    WriteBytes(folder / u"a", "old");
    const OsHandle reader = OpenedForReading(folder / u"a");
    ASSERT_TRUE(reader);
    EXPECT_TRUE(Opened(folder / u"a", GENERIC_WRITE, CREATE_ALWAYS));
    EXPECT_EQ(ReadBytes(folder / u"a"), "");
}

TEST(OpenFile, OpenAlwaysKeepsTheFileOrMakesOne)
{
    const TempFolder folder;
    WriteBytes(folder / u"a", "old");
    EXPECT_TRUE(Opened(folder / u"a", GENERIC_WRITE, OPEN_ALWAYS));
    EXPECT_EQ(ReadBytes(folder / u"a"), "old");
    EXPECT_TRUE(Opened(folder / u"b", GENERIC_WRITE, OPEN_ALWAYS));
    EXPECT_EQ(ReadBytes(folder / u"b"), "");
}

TEST(OpenFile, TruncateExistingNeedsTheFileAndWriteAccess)
{
    const TempFolder folder;
    EXPECT_EQ(ErrorOfOpening(folder / u"a", GENERIC_WRITE, TRUNCATE_EXISTING),
              ERROR_FILE_NOT_FOUND);
    WriteBytes(folder / u"a", "old");
    EXPECT_TRUE(Opened(folder / u"a", GENERIC_WRITE, TRUNCATE_EXISTING));
    EXPECT_EQ(ReadBytes(folder / u"a"), "");
}

TEST(OpenFile, UnknownDispositionIsRefused)
{
    const TempFolder folder;
    for (const DWORD disposition : {0U, 6U, 0xFFFFFFFFU})
    {
        EXPECT_EQ(ErrorOfOpening(folder / u"a", GENERIC_WRITE, disposition),
                  ERROR_INVALID_PARAMETER);
    }
    EXPECT_FALSE(std::filesystem::exists(folder.Path() / "a"));
}

TEST(OpenFile, FolderOpensOnlyForALookup)
{
    const TempFolder folder;
    EXPECT_EQ(ErrorOfOpening(folder.Text(), GENERIC_READ, OPEN_EXISTING), ERROR_ACCESS_DENIED);
    EXPECT_EQ(ErrorOfOpening(folder.Text(), GENERIC_WRITE, OPEN_EXISTING), ERROR_ACCESS_DENIED);
    EXPECT_TRUE(Opened(folder.Text(), GENERIC_READ, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS));
}

TEST(OpenFile, FolderOpensForItsList)
{
    const TempFolder folder;
    EXPECT_TRUE(
        Opened(folder.Text(), FILE_LIST_DIRECTORY, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS));
    EXPECT_EQ(ErrorOfOpening(folder / u"none", FILE_LIST_DIRECTORY, OPEN_EXISTING,
                             FILE_FLAG_BACKUP_SEMANTICS),
              ERROR_FILE_NOT_FOUND);
}

TEST(OpenFile, AttributesAreEnoughForTheTimes)
{
    const TempFolder folder;
    WriteBytes(folder / u"a", "x");
    for (const std::u16string& path : {folder / u"a", folder.Text()})
    {
        const OsHandle item =
            Opened(path, FILE_READ_ATTRIBUTES, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);
        ASSERT_TRUE(item);
        FILETIME write{};
        EXPECT_TRUE(GetFileTime(item.Get(), nullptr, nullptr, &write));
        EXPECT_NE(write.dwHighDateTime, 0U);
        char byte = 0;
        DWORD moved = 0;
        EXPECT_EQ(ErrorOf(ReadFile(item.Get(), &byte, 1, &moved, nullptr)), ERROR_ACCESS_DENIED);
    }
    EXPECT_EQ(ErrorOfOpening(folder / u"none", FILE_READ_ATTRIBUTES, OPEN_EXISTING,
                             FILE_FLAG_BACKUP_SEMANTICS),
              ERROR_FILE_NOT_FOUND);
}

TEST(OpenFile, LookupOpensFilesToo)
{
    const TempFolder folder;
    WriteBytes(folder / u"a", "12345");
    const OsHandle file =
        Opened(folder / u"a", GENERIC_READ, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);
    ASSERT_TRUE(file);
    LONG high = 0;
    EXPECT_EQ(SetFilePointer(file.Get(), 0, &high, FILE_END), 5U);
}

TEST(OpenFile, DeleteOnCloseLeavesNothing)
{
    const TempFolder folder;
    WriteBytes(folder / u"a", "");
    OsHandle file = Opened(folder / u"a", everything, OPEN_EXISTING,
                           FILE_ATTRIBUTE_NORMAL | FILE_FLAG_DELETE_ON_CLOSE);
    ASSERT_TRUE(file);
    DWORD moved = 0;
    EXPECT_TRUE(WriteFile(file.Get(), "123", 3, &moved, nullptr));
    EXPECT_EQ(SetFilePointer(file.Get(), 0, nullptr, FILE_BEGIN), 0U);
    char buffer[8];
    EXPECT_TRUE(ReadFile(file.Get(), buffer, sizeof buffer, &moved, nullptr));
    EXPECT_EQ(moved, 3U);
    EXPECT_TRUE(file.Close());
    EXPECT_FALSE(std::filesystem::exists(folder.Path() / "a"));
}

TEST(OpenFile, NamesBeyondAsciiAreKept)
{
    const TempFolder folder;
    const std::u16string name = u"\u00e4\u65e5\u672c\U0001F600";
    EXPECT_TRUE(Opened(folder / name, GENERIC_WRITE, CREATE_NEW));
    EXPECT_TRUE(std::filesystem::exists(folder.Path() / std::filesystem::path(name)));
}

TEST(ClosingAHandle, RefusesWhatIsNoHandle)
{
    EXPECT_EQ(ErrorOf(CloseHandle(nullptr)), ERROR_INVALID_HANDLE);
}

TEST(ClosingAHandle, SecondCloseFails)
{
    const TempFolder folder;
    const HANDLE file = Opened(folder / u"a", GENERIC_WRITE, CREATE_NEW).Detach();
    EXPECT_TRUE(CloseHandle(file));
    EXPECT_EQ(ErrorOf(CloseHandle(file)), ERROR_INVALID_HANDLE);
}

} // namespace
} // namespace tarnwell::test
