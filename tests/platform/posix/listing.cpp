// Listing a folder: what signals, other programs and failing calls make of it.
#include "platform/listing.h"
#include "platform/posix/systemcalls.h"
#include "support/tempfolder.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <filesystem>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace tarnwell::test
{
namespace
{

class ListingHere : public testing::Test
{
protected:
    ListingHere()
    {
        WriteBytes(folder_ / u"a", "12345");
        WriteBytes(folder_ / u"b", "12345");
    }

    TempFolder folder_;
};

TEST_F(ListingHere, SignalsInterruptNothing)
{
    SystemCalls calls;
    calls.Interrupt("openat");
    calls.Interrupt("getdents64");
    const Listing listing = List(folder_ / u"*");
    EXPECT_EQ(listing.error, ERROR_NO_MORE_FILES);
    EXPECT_EQ(listing.records.size(), 4U);
}

TEST_F(ListingHere, NoDescriptorGoesToAnotherProgram)
{
    const std::vector<int> before = InheritableDescriptors();
    WIN32_FIND_DATAW record;
    const FindHandle find(FindFirstFileW(Wide(folder_ / u"*"), &record));
    ASSERT_TRUE(find);
    EXPECT_EQ(InheritableDescriptors(), before);
}

TEST_F(ListingHere, AListingThatBreaksOffIsAFailure)
{
    SystemCalls calls;
    calls.Fail("getdents64", 2, EIO);
    const Listing listing = List(folder_ / u"*");
    EXPECT_EQ(listing.error, ERROR_IO_DEVICE);
    EXPECT_EQ(listing.records.size(), 4U);
}

TEST_F(ListingHere, AFolderThatIsRemovedMeanwhileHasNoMoreEntries)
{
    const std::u16string removed = folder_ / u"removed";
    fs::create_directory(fs::path(removed));
    WIN32_FIND_DATAW record;
    const FindHandle find(FindFirstFileW(Wide(removed + u"/*"), &record));
    ASSERT_TRUE(find);
    EXPECT_TRUE(FindNextFileW(find.Get(), &record)) << "the one above";
    fs::remove(fs::path(removed));
    EXPECT_FALSE(FindNextFileW(find.Get(), &record));
    EXPECT_EQ(GetLastError(), ERROR_NO_MORE_FILES);
}

// More than the system tells at a time.
TEST_F(ListingHere, AllOfALongFolderIsListedOnce)
{
    constexpr int count = 300;
    std::vector<std::u16string> expected{u".", u"..", u"a", u"b"};
    for (int i = 0; i < count; ++i)
    {
        const std::string number = std::to_string(i);
        expected.push_back(std::u16string(200, u'n') +
                           std::u16string(number.begin(), number.end()));
        WriteBytes(folder_ / expected.back(), "");
    }
    SystemCalls calls;
    const Listing listing = List(folder_ / u"*");
    EXPECT_EQ(listing.error, ERROR_NO_MORE_FILES);
    EXPECT_THAT(listing.Names(), testing::UnorderedElementsAreArray(expected));
    EXPECT_GT(calls.Count("getdents64"), 2) << "it is in one block";
}

TEST_F(ListingHere, WithoutDescriptorsTheReasonIsTold)
{
    SystemCalls calls;
    calls.Fail("openat", 1, EMFILE);
    EXPECT_EQ(List(folder_ / u"*").error, ERROR_TOO_MANY_OPEN_FILES);
}

TEST_F(ListingHere, WhatVanishesIsPassedOverAndWhatCannotBeReadIsNot)
{
    // The first two are the folder itself and the one above.
    SystemCalls calls;
    calls.Fail("statx", 3, ENOENT);
    calls.Fail("statx", 4, EIO);
    const Listing listing = List(folder_ / u"*");
    EXPECT_EQ(listing.error, ERROR_NO_MORE_FILES);
    ASSERT_EQ(listing.records.size(), 3U);
    EXPECT_EQ(SizeOf(listing.records[2]), 0U);
    EXPECT_EQ(WriteTimeOf(listing.records[2]), 0U);
}

} // namespace
} // namespace tarnwell::test
