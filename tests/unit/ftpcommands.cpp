// What listings and look-ups ask a server, and in which order.
#include "unit/ftpcommandstest.h"

namespace tarnwell::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(FtpCommands, AListingHasAllFactsInTheServersOrder)
{
    constexpr std::uint64_t local = 133'000'000'000'000'000;
    internet.folders[u"docs"] = {{u"b.txt", 128, 0x1'0000'0005, local},
                                 {u"a", folderBit | 1, 77, local},
                                 {u"ro", 1, 3, local},
                                 {u"both", FILE_ATTRIBUTE_HIDDEN | 1, 4, local}};
    const FSItems items = List(u"ftp://u:p@h:21/docs");
    ASSERT_EQ(items.size(), 4U);
    EXPECT_EQ(items[0]->text, u"ftp://u:p@h:21/docs/b.txt");
    EXPECT_EQ(items[0]->size, 0x1'0000'0005U);
    EXPECT_EQ(items[0]->modifiedTime, local - internet.localBias);
    EXPECT_FALSE(items[0]->isDirectory);
    EXPECT_FALSE(items[0]->isReadOnly);
    EXPECT_EQ(items[0]->revision, 0U);
    EXPECT_EQ(items[1]->text, u"ftp://u:p@h:21/docs/a");
    EXPECT_TRUE(items[1]->isDirectory);
    EXPECT_FALSE(items[1]->isReadOnly);
    EXPECT_EQ(items[1]->size, 0U);
    EXPECT_TRUE(items[2]->isReadOnly);
    EXPECT_TRUE(items[3]->isReadOnly);
}

TEST_F(FtpCommands, ATimeThatIsUnknownOrCannotBeConvertedIsZero)
{
    internet.folders[u"d"] = {{u"none", 128, 1, 0}, {u"early", 128, 1, 5}};
    for (const auto& item : List(u"ftp://u:p@h:21/d"))
        EXPECT_EQ(item->modifiedTime, 0U);
}

TEST_F(FtpCommands, PatternsEndInASlashAndAStar)
{
    internet.folders[u""] = {};
    internet.folders[u"docs"] = {};
    internet.folders[u"docs/"] = {};
    List(u"ftp://u:p@h:21");
    List(u"ftp://u:p@h:21/");
    List(u"ftp://u:p@h:21/docs");
    List(u"ftp://u:p@h:21/docs/");
    EXPECT_THAT(Asked(), ElementsAre(u"find /*", u"find /*", u"find docs/*", u"find docs/*"));
}

TEST_F(FtpCommands, AnEmptyFolderHasNoItems)
{
    internet.folders[u"empty"] = {};
    EXPECT_THAT(List(u"ftp://u:p@h:21/empty"), IsEmpty());
    EXPECT_TRUE(IsConnected());
}

TEST_F(FtpCommands, TheFolderAndItsParentAreNoItems)
{
    internet.folders[u"d"] = {{u".", folderBit}, {u"..", folderBit}, {u"...", 128}, {u".x", 128}};
    EXPECT_THAT(Addresses(u"ftp://u:p@h:21/d"),
                ElementsAre(u"ftp://u:p@h:21/d/...", u"ftp://u:p@h:21/d/.x"));
}

TEST_F(FtpCommands, WhatLeadsOutOfTheFolderIsNoItemAndLosesNoOther)
{
    internet.folders[u"d"] = {{u"../x", 128},   {u"a", 128},     {u"/etc", folderBit},
                              {u"", folderBit}, {u"sub/b", 128}, {u"back\\slash", 128}};
    EXPECT_THAT(Addresses(u"ftp://u:p@h:21/d"),
                ElementsAre(u"ftp://u:p@h:21/d/a", u"ftp://u:p@h:21/d/back\\slash"));
}

TEST_F(FtpCommands, AListingEndsWhateverTheReasonIs)
{
    internet.folders[u"d"] = {{u"a"}, {u"b"}};
    internet.Fail("InternetFindNextFileW", ERROR_INTERNET_CONNECTION_RESET);
    EXPECT_THAT(Addresses(u"ftp://u:p@h:21/d"), ElementsAre(u"ftp://u:p@h:21/d/a"));
}

TEST_F(FtpCommands, NothingIsCached)
{
    internet.folders[u"d"] = {{u"a"}};
    List(u"ftp://u:p@h:21/d");
    internet.folders[u"d"].push_back({u"b"});
    EXPECT_EQ(List(u"ftp://u:p@h:21/d").size(), 2U);
}

// What a failed listing says; the block holds the whole address, on purpose.
std::u16string NotListed(const std::u16string& last)
{
    return u"Couldn't find the URI \"d\".\n[uri: \"ftp://u:p@h:21/d\"\nsearchPattern: d/*\n" +
           last + u"]";
}

TEST_F(FtpCommands, AFailedListingTellsTheError)
{
    internet.Fail("FtpFindFirstFileW", ERROR_INTERNET_TIMEOUT);
    EXPECT_THAT(Listing(u"ftp://u:p@h:21/d"),
                Threw(notFoundStatus, NotListed(u"GetLastError(): 12002")));
    internet.Fail("FtpFindFirstFileW", 0);
    EXPECT_THAT(Listing(u"ftp://u:p@h:21/d"),
                Threw(notFoundStatus, NotListed(u"GetLastError(): 0")));
}

TEST_F(FtpCommands, AFailedListingTellsAllThatTheServerSaid)
{
    internet.Fail("FtpFindFirstFileW", ERROR_INTERNET_EXTENDED_ERROR, u"550-One.\r\n550 Two.\r\n");
    EXPECT_THAT(Listing(u"ftp://u:p@h:21/d"),
                Threw(notFoundStatus, NotListed(u"ExtendedError: 550-One.\n550 Two.")));
}

TEST_F(FtpCommands, AnAnswerOfTheServerKeepsTheConnection)
{
    Listing(u"ftp://u:p@h:21/d"); // not found
    EXPECT_TRUE(IsConnected());
    internet.Fail("FtpFindFirstFileW", ERROR_INTERNET_EXTENDED_ERROR, u"550 No.");
    Listing(u"ftp://u:p@h:21/d");
    EXPECT_TRUE(IsConnected());
}

TEST_F(FtpCommands, ADeadConnectionIsClosedAndTheServersWordsAreReadBefore)
{
    for (const DWORD error : {12002U, 12030U, 12031U, 12029U, 0U, 87U})
    {
        internet.Fail("FtpFindFirstFileW", error);
        EXPECT_TRUE(Listing(u"ftp://u:p@h:21/d"));
        EXPECT_FALSE(IsConnected()) << error;
    }
    internet.Fail("FtpFindFirstFileW", ERROR_INTERNET_EXTENDED_ERROR, u"421 Idle for too long.");
    EXPECT_THAT(Listing(u"ftp://u:p@h:21/d"),
                Threw(notFoundStatus, NotListed(u"ExtendedError: 421 Idle for too long.")));
    EXPECT_FALSE(IsConnected());
    internet.Fail("FtpFindFirstFileW", ERROR_FILE_NOT_FOUND, u"421 Bye.");
    Listing(u"ftp://u:p@h:21/d");
    EXPECT_FALSE(IsConnected());
    internet.folders[u"d"] = {{u"a"}};
    EXPECT_EQ(List(u"ftp://u:p@h:21/d").size(), 1U) << "connects again";
}

TEST_F(FtpCommands, AnItemIsFoundInItsParentsListing)
{
    internet.folders[u"a"] = {{u"x"}, {u"b", folderBit}};
    internet.folders[u"a/b"] = {{u"c"}};
    EXPECT_EQ(Found(u"ftp://u:p@h:21/a/b"), u"ftp://u:p@h:21/a/b");
    EXPECT_EQ(Found(u"ftp://u:p@h:21/a/b/c"), u"ftp://u:p@h:21/a/b/c");
    EXPECT_THAT(Asked(), ElementsAre(u"find a/*", u"find a/b/*"));
}

TEST_F(FtpCommands, ItemsInTheRootAreFound)
{
    internet.folders[u""] = {{u"a.txt"}, {u"dir", folderBit}};
    EXPECT_EQ(Found(u"ftp://u:p@h:21/a.txt"), u"ftp://u:p@h:21//a.txt");
    EXPECT_EQ(Found(u"ftp://u:p@h:21/dir"), u"ftp://u:p@h:21//dir");
    EXPECT_EQ(Found(u"ftp://u:p@h:21//a.txt"), u"ftp://u:p@h:21//a.txt") << "as it is listed";
    EXPECT_TRUE(Finding(u"ftp://u:p@h:21/b.txt"));
    EXPECT_TRUE(Finding(u"ftp://u:p@h:21///a.txt"));
}

TEST_F(FtpCommands, AnAddressIsRecomposedBeforeItIsCompared)
{
    internet.folders[u"d"] = {{u"a"}};
    // The password is dropped without a user, and a port is a number.
    FTPSession anonymous({u"", u"pw", u"h", noPort});
    host->credentials = {S_OK, u"", u"", u"h"};
    EXPECT_EQ(FtpFind(anonymous, user, FTPUri(u"ftp://:pw@h/d/a"))->text, u"ftp://h/d/a");
    EXPECT_EQ(Found(u"ftp://u:p@h:0021/d/a"), u"ftp://u:p@h:21/d/a");
}

TEST_F(FtpCommands, AnythingElseIsComparedExactly)
{
    internet.folders[u"d"] = {{u"a.txt"}, {u"sub", folderBit}};
    internet.folders[u"d/sub"] = {};
    EXPECT_THAT(Finding(u"ftp://u:p@h:21/d/A.txt"),
                Threw(notFoundStatus, u"Couldn't find the URI \"d/A.txt\".\n[uri: "
                                      u"\"ftp://u:p@h:21/d/A.txt\"]"));
    EXPECT_TRUE(Finding(u"ftp://u:p@h:21/d/sub/")) << "a slash at the end";
    EXPECT_TRUE(Finding(u"ftp://u:p@h:21/d/*"));
    EXPECT_TRUE(IsConnected());
}

} // namespace
} // namespace tarnwell::test
