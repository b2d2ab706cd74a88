// Listing folders.
#include "platform/listing.h"
#include "support/opened.h"
#include "support/tempfolder.h"
#include "support/wine.h"

#include <gmock/gmock.h>

namespace tarnwell::test
{
namespace
{

using testing::UnorderedElementsAreArray;

TEST(Find, EmptyFolderHasItselfAndItsParent)
{
    const TempFolder folder;
    const Listing listing = List(folder / u"*");
    ASSERT_EQ(listing.records.size(), 2U);
    EXPECT_EQ(listing.Names()[0], u".");
    EXPECT_EQ(listing.Names()[1], u"..");
    for (const WIN32_FIND_DATAW& record : listing.records)
        EXPECT_NE(record.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY, 0U);
    EXPECT_EQ(listing.error, ERROR_NO_MORE_FILES);
}

TEST(Find, ListsEachEntryOnce)
{
    const TempFolder folder;
    std::vector<std::u16string> expected{u".", u".."};
    for (int i = 0; i < 300; ++i)
    {
        const std::string number = std::to_string(i);
        expected.emplace_back(number.begin(), number.end());
        WriteBytes(folder / expected.back(), "");
    }
    const Listing listing = List(folder / u"*");
    EXPECT_THAT(listing.Names(), UnorderedElementsAreArray(expected));
    EXPECT_EQ(listing.error, ERROR_NO_MORE_FILES);
}

TEST(Find, TellsKindSizeAndTime)
{
    const TempFolder folder;
    WriteBytes(folder / u"file", "12345");
    ASSERT_TRUE(CreateDirectoryW(Wide(folder / u"sub"), nullptr));
    const Listing listing = List(folder / u"*");
    const WIN32_FIND_DATAW* const file = listing.Find(u"file");
    const WIN32_FIND_DATAW* const sub = listing.Find(u"sub");
    ASSERT_TRUE(file != nullptr && sub != nullptr);
    EXPECT_EQ(file->dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY, 0U);
    EXPECT_EQ(SizeOf(*file), 5U);
    EXPECT_NE(sub->dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY, 0U);
    EXPECT_EQ(SizeOf(*sub), 0U);

    const OsHandle opened = OpenedForReading(folder / u"file");
    FILETIME write = {};
    ASSERT_TRUE(GetFileTime(opened.Get(), nullptr, nullptr, &write));
    EXPECT_EQ(file->ftLastWriteTime.dwLowDateTime, write.dwLowDateTime);
    EXPECT_EQ(file->ftLastWriteTime.dwHighDateTime, write.dwHighDateTime);
    EXPECT_NE(WriteTimeOf(*sub), 0U);
}

TEST(Find, SizeBeyond32BitsComesInTwoHalves)
{
    const TempFolder folder;
    WriteBytes(folder / u"big", "");
    std::filesystem::resize_file(folder.Path() / "big", 0x100000005);
    const Listing listing = List(folder / u"*");
    const WIN32_FIND_DATAW* const big = listing.Find(u"big");
    ASSERT_NE(big, nullptr);
    EXPECT_EQ(SizeOf(*big), 0x100000005U);
}

TEST(Find, NamesBeyondAsciiAreKept)
{
    const TempFolder folder;
    const std::u16string name = u"\u00e4\u65e5\u672c\U0001F600";
    WriteBytes(folder / name, "");
    EXPECT_NE(List(folder / u"*").Find(name), nullptr);
}

TEST(Find, LongestNameIsKept)
{
    const TempFolder folder;
    const std::u16string name(255 - 40, u'n');
    WriteBytes(folder / name, "");
    EXPECT_NE(List(folder / u"*").Find(name), nullptr);
}

TEST(Find, MissingFolderHasAnErrorOfItsOwn)
{
    const TempFolder folder;
    const Listing listing = List(Joined(folder / u"none", u"*"));
    EXPECT_TRUE(listing.records.empty());
    EXPECT_EQ(listing.error, ERROR_PATH_NOT_FOUND);
    EXPECT_EQ(List(u"").error, ERROR_PATH_NOT_FOUND);
}

TEST(Find, FileIsNoFolder)
{
    if (IsUnderWine())
        GTEST_SKIP() << "Wine calls it an invalid name";
    const TempFolder folder;
    WriteBytes(folder / u"file", "");
    EXPECT_EQ(List(Joined(folder / u"file", u"*")).error, ERROR_DIRECTORY);
}

TEST(Find, WithoutAPatternFindsTheEntryItself)
{
    const TempFolder folder;
    WriteBytes(folder / u"file", "12345");
    ASSERT_TRUE(CreateDirectoryW(Wide(folder / u"sub"), nullptr));
    const Listing file = List(folder / u"file");
    ASSERT_EQ(file.records.size(), 1U);
    EXPECT_EQ(file.Names()[0], u"file");
    EXPECT_EQ(SizeOf(file.records[0]), 5U);
    EXPECT_EQ(file.error, ERROR_NO_MORE_FILES);
    const Listing sub = List(folder / u"sub");
    ASSERT_EQ(sub.records.size(), 1U);
    EXPECT_NE(sub.records[0].dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY, 0U);
}

TEST(Find, MissingEntryIsToldFromMissingFolder)
{
    const TempFolder folder;
    EXPECT_EQ(List(folder / u"none").error, ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(List(Joined(folder / u"none", u"a")).error, ERROR_PATH_NOT_FOUND);
}

TEST(Find, InvalidHandleIsRefused)
{
    WIN32_FIND_DATAW record;
    EXPECT_EQ(ErrorOf(FindNextFileW(INVALID_HANDLE_VALUE, &record)), ERROR_INVALID_HANDLE);
    EXPECT_EQ(ErrorOf(FindClose(INVALID_HANDLE_VALUE)), ERROR_INVALID_HANDLE);
}

} // namespace
} // namespace tarnwell::test
