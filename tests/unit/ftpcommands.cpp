// What is asked about folders, and in which order.
#include "ftp/ftpcommands.h"

#include "frame/text.h"
#include "unit/ftptest.h"

namespace tarnwell::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

constexpr DWORD folderBit = FILE_ATTRIBUTE_DIRECTORY;

class FtpCommands : public FtpTest
{
protected:
    FSItems List(const std::u16string& address)
    {
        return FtpList(session, user, FTPUri(address));
    }
    std::vector<std::u16string> Addresses(const std::u16string& address)
    {
        std::vector<std::u16string> texts;
        for (const auto& item : List(address))
            texts.push_back(item->text);
        return texts;
    }
    std::u16string Found(const std::u16string& address)
    {
        return FtpFind(session, user, FTPUri(address))->text;
    }
    std::optional<FtpFailure> Listing(const std::u16string& address)
    {
        return FailureOf([&] { List(address); });
    }
    std::optional<FtpFailure> Finding(const std::u16string& address)
    {
        return FailureOf([&] { Found(address); });
    }
    std::optional<FtpFailure> Creating(const std::u16string& address, bool recursive)
    {
        return FailureOf([&] { FtpCreateFolder(session, user, FTPUri(address), recursive); });
    }
    std::optional<FtpFailure> Deleting(const std::u16string& address, bool recursive)
    {
        return FailureOf([&] { FtpDeleteItem(session, user, FTPUri(address), recursive); });
    }
    bool IsConnected() const
    {
        return !internet.Open().empty();
    }
    // The calls from here on, without those that connect.
    std::vector<std::u16string> Asked()
    {
        std::vector<std::u16string> calls = internet.Calls();
        std::erase_if(calls, [](const std::u16string& call) {
            return call.starts_with(u"open") || call.starts_with(u"connect");
        });
        internet.ForgetCalls();
        return calls;
    }

    FTPSession session{{u"u", u"p", u"h", 21}};
};

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
    internet.folders[u"d"] = {{u"../x", 128},       {u"a", 128},          {u"/etc", folderBit},
                              {u"", folderBit},     {u"sub/b", 128},      {u"new\nline", 128},
                              {u"cr\rx", 128},      {u"sep\u2028x", 128}, {u"par\u2029x", 128},
                              {u"back\\slash", 128}};
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

TEST_F(FtpCommands, AFolderIsCreated)
{
    EXPECT_FALSE(Creating(u"ftp://u:p@h:21/a/b", false));
    EXPECT_THAT(Asked(), ElementsAre(u"create a/b"));
}

TEST_F(FtpCommands, CreatingWhatExistsFails)
{
    const auto create = [&](const std::u16string& reply) {
        internet.Fail("FtpCreateDirectoryW", ERROR_INTERNET_EXTENDED_ERROR, reply);
        return Creating(u"ftp://u:p@h:21/a", false);
    };
    const std::u16string message = u"Failed to create a folder at \"a\".\n\n";
    EXPECT_THAT(create(u"550 a: File exists"), Threw(0x800700B7, message + u"550 a: File exists"));
    EXPECT_THAT(create(u"521 Taken."), Threw(0x800700B7, message + u"521 Taken."));
    EXPECT_THAT(create(u"550 Permission denied."),
                Threw(extendedStatus, message + u"550 Permission denied."));
    internet.Fail("FtpCreateDirectoryW", 12031, u"exists");
    EXPECT_THAT(Creating(u"ftp://u:p@h:21/a", false), Threw(0x80072EFF, message + u"exists"))
        << "only a refusal means that";
}

TEST_F(FtpCommands, APathIsCreatedPieceByPiece)
{
    EXPECT_FALSE(Creating(u"ftp://u:p@h:21/a/b/c", true));
    EXPECT_THAT(Asked(), ElementsAre(u"find a/b/c", u"create a", u"create a/b", u"create a/b/c"));
}

TEST_F(FtpCommands, WhatIsThereOfAPathIsNoFailure)
{
    internet.folders[u"a"] = {};
    internet.Fail("FtpFindFirstFileW", ERROR_NO_MORE_FILES);
    EXPECT_FALSE(Creating(u"ftp://u:p@h:21/a/b", true));
    internet.Fail("FtpFindFirstFileW", ERROR_FILE_NOT_FOUND);
    internet.Fail("FtpCreateDirectoryW", ERROR_INTERNET_EXTENDED_ERROR,
                  u"550 Create directory operation failed.");
    internet.Fail("FtpCreateDirectoryW", ERROR_ALREADY_EXISTS);
    EXPECT_FALSE(Creating(u"ftp://u:p@h:21/a/b", true));
    for (const char16_t* const reply : {u"521 Taken.", u"521-Taken\r\n521 by a folder.",
                                        u"550-a\r\n550 exists", u"550 a: File exists"})
    {
        internet.ForgetCalls();
        internet.Fail("FtpFindFirstFileW", ERROR_FILE_NOT_FOUND);
        internet.Fail("FtpCreateDirectoryW", ERROR_INTERNET_EXTENDED_ERROR, reply);
        EXPECT_FALSE(Creating(u"ftp://u:p@h:21/x/" + std::u16string(reply, 3), true));
        EXPECT_EQ(internet.Calls(u"create").size(), 2U) << "it goes on";
        internet.folders.erase(u"x/" + std::u16string(reply, 3));
    }
}

TEST_F(FtpCommands, OtherRefusalsOfAPieceEndIt)
{
    internet.Fail("FtpCreateDirectoryW", ERROR_INTERNET_EXTENDED_ERROR, u"550 Already Exists");
    EXPECT_THAT(
        Creating(u"ftp://u:p@h:21/a/b/c", true),
        Threw(extendedStatus, u"Failed to create a folder at \"a\".\n\n550 Already Exists"));
    EXPECT_THAT(Asked(), ElementsAre(u"find a/b/c", u"create a"));
    internet.Fail("FtpCreateDirectoryW", ERROR_INTERNET_EXTENDED_ERROR, u"5210 521");
    EXPECT_TRUE(Creating(u"ftp://u:p@h:21/a/b/c", true));
}

TEST_F(FtpCommands, APathThatExistsIsAFailure)
{
    internet.folders[u"a"] = {};
    internet.files[u"f"] = "";
    internet.responseFails = true;
    EXPECT_THAT(Creating(u"ftp://u:p@h:21/a", true), Threw(0x800700B7, u""));
    EXPECT_THAT(Creating(u"ftp://u:p@h:21/f", true), Threw(0x800700B7, u""));
    EXPECT_THAT(internet.Calls(u"create"), IsEmpty());
}

TEST_F(FtpCommands, APathThatCannotBeLookedForIsAnotherFailure)
{
    internet.Fail("FtpFindFirstFileW", ERROR_INTERNET_CONNECTION_RESET);
    EXPECT_THAT(Creating(u"ftp://u:p@h:21/a/b", true),
                Threw(0x80072EFF, u"Failed to get attributes for the file or folder \"a/b\".\n\n"));
}

TEST_F(FtpCommands, PathsHavePrefixes)
{
    EXPECT_THAT(SplitFolderPrefixes(u"a/b/c"), ElementsAre(u"a", u"a/b", u"a/b/c"));
    EXPECT_THAT(SplitFolderPrefixes(u"a/b/"), ElementsAre(u"a", u"a/b"));
    EXPECT_THAT(SplitFolderPrefixes(u""), ElementsAre(u""));
    EXPECT_THAT(SplitFolderPrefixes(u"/a/b"), ElementsAre(u"/a", u"/a/b"));
    EXPECT_THAT(SplitFolderPrefixes(u"a//b"), ElementsAre(u"a", u"a/", u"a//b"));
    EXPECT_THAT(SplitFolderPrefixes(u"/"), IsEmpty());
}

TEST_F(FtpCommands, AFileIsDeletedWhateverIsSaidOfFolders)
{
    internet.folders[u"d"] = {{u"a.txt"}};
    EXPECT_FALSE(Deleting(u"ftp://u:p@h:21/d/a.txt", false));
    EXPECT_FALSE(Deleting(u"ftp://u:p@h:21/d/a.txt", true));
    EXPECT_THAT(Asked(),
                ElementsAre(u"find d/*", u"delete d/a.txt", u"find d/*", u"delete d/a.txt"));
}

TEST_F(FtpCommands, AnItemInTheRootIsDeletedByItsOwnPath)
{
    internet.folders[u""] = {{u"a.txt"}};
    EXPECT_FALSE(Deleting(u"ftp://u:p@h:21/a.txt", false));
    EXPECT_THAT(Asked(), ElementsAre(u"find /*", u"delete a.txt"));
}

TEST_F(FtpCommands, AFolderIsRemovedEmptyOrNot)
{
    internet.folders[u"d"] = {{u"sub", folderBit}};
    internet.folders[u"d/sub"] = {{u"x"}};
    EXPECT_FALSE(Deleting(u"ftp://u:p@h:21/d/sub", false)) << "the server's to say";
    EXPECT_THAT(Asked(), ElementsAre(u"find d/*", u"remove d/sub"));
}

TEST_F(FtpCommands, AFailedDeletionHasItsMessage)
{
    internet.folders[u"d"] = {{u"a"}, {u"sub", folderBit}};
    internet.Fail("FtpDeleteFileW", ERROR_INTERNET_EXTENDED_ERROR, u"550 Denied.");
    EXPECT_THAT(Deleting(u"ftp://u:p@h:21/d/a", false),
                Threw(extendedStatus, u"Can't delete the file or folder \"d/a\".\n\n550 Denied."));
    internet.Fail("FtpRemoveDirectoryW", ERROR_INTERNET_EXTENDED_ERROR, u"550 Not empty.");
    EXPECT_THAT(
        Deleting(u"ftp://u:p@h:21/d/sub", false),
        Threw(extendedStatus, u"Can't delete the file or folder \"d/sub\".\n\n550 Not empty."));
    EXPECT_THAT(Deleting(u"ftp://u:p@h:21/d/b", false),
                Threw(notFoundStatus, u"Couldn't find the URI \"d/b\".\n[uri: "
                                      u"\"ftp://u:p@h:21/d/b\"]"));
}

class FtpTree : public FtpCommands
{
protected:
    FtpTree()
    {
        internet.folders[u"d"] = {{u"t", folderBit}};
        internet.folders[u"d/t"] = {
            {u"s1", folderBit}, {u"f1"}, {u"s2", folderBit}, {u"f2"}, {u"f3"}};
        internet.folders[u"d/t/s1"] = {{u"deep", folderBit}, {u"g"}};
        internet.folders[u"d/t/s1/deep"] = {};
        internet.folders[u"d/t/s2"] = {{u"h"}};
    }
};

TEST_F(FtpTree, FilesGoBeforeFoldersAndFoldersInTheirOrder)
{
    EXPECT_FALSE(Deleting(u"ftp://u:p@h:21/d/t", true));
    EXPECT_THAT(Asked(), ElementsAre(u"find d/*", u"delete d/t", u"find d/t/*", u"delete d/t/f1",
                                     u"delete d/t/f2", u"delete d/t/f3",                     //
                                     u"delete d/t/s1", u"find d/t/s1/*", u"delete d/t/s1/g", //
                                     u"delete d/t/s1/deep", u"find d/t/s1/deep/*",           //
                                     u"remove d/t/s1/deep", u"remove d/t/s1",                //
                                     u"delete d/t/s2", u"find d/t/s2/*", u"delete d/t/s2/h", //
                                     u"remove d/t/s2", u"remove d/t"));
    EXPECT_EQ(internet.Open().size(), 2U) << "one session for all";
}

TEST_F(FtpTree, ALinkThatIsShownAsAFolderIsNeverEntered)
{
    internet.linksToFolders = {u"d/t/s1"};
    EXPECT_FALSE(Deleting(u"ftp://u:p@h:21/d/t", true));
    for (const std::u16string& call : internet.Calls())
        EXPECT_EQ(call.find(u"s1/"), std::u16string::npos);
    EXPECT_THAT(internet.Calls(u"remove"), ElementsAre(u"remove d/t/s2", u"remove d/t"));
}

TEST_F(FtpTree, ALinkAtItsRootIsNotEnteredEither)
{
    internet.linksToFolders = {u"d/t"};
    EXPECT_FALSE(Deleting(u"ftp://u:p@h:21/d/t", true));
    EXPECT_THAT(Asked(), ElementsAre(u"find d/*", u"delete d/t"));
}

TEST_F(FtpTree, TheFirstFailureEndsIt)
{
    internet.Fail("FtpDeleteFileW", ERROR_INTERNET_EXTENDED_ERROR, u"550 A folder.");
    internet.Fail("FtpDeleteFileW", ERROR_INTERNET_EXTENDED_ERROR, u"550 Denied.");
    EXPECT_THAT(
        Deleting(u"ftp://u:p@h:21/d/t", true),
        Threw(extendedStatus, u"Can't delete the file or folder \"d/t/f1\".\n\n550 Denied."));
    EXPECT_THAT(Asked(), ElementsAre(u"find d/*", u"delete d/t", u"find d/t/*", u"delete d/t/f1"));
    internet.Fail("FtpRemoveDirectoryW", ERROR_INTERNET_EXTENDED_ERROR, u"550 Not empty.");
    EXPECT_THAT(Deleting(u"ftp://u:p@h:21/d/t", true),
                Threw(extendedStatus,
                      u"Can't delete the file or folder \"d/t/s1/deep\".\n\n550 Not empty."));
}

TEST_F(FtpTree, OnlyARefusalLeadsIntoAFolder)
{
    constexpr DWORD timeOut = 12002;
    constexpr DWORD connectionLost = 12031;
    for (const DWORD error : {timeOut, connectionLost, DWORD{ERROR_NOT_ENOUGH_MEMORY}})
    {
        internet.ForgetCalls();
        internet.Fail("FtpDeleteFileW", error);
        EXPECT_THAT(Deleting(u"ftp://u:p@h:21/d/t", true),
                    Threw(0x80070000 | error, u"Can't delete the file or folder \"d/t\".\n\n"));
        EXPECT_THAT(Asked(), ElementsAre(u"find d/*", u"delete d/t"));
    }
    internet.ForgetCalls();
    internet.Fail("FtpDeleteFileW", ERROR_INTERNET_EXTENDED_ERROR, u"421 Closing.");
    EXPECT_THAT(Deleting(u"ftp://u:p@h:21/d/t", true),
                Threw(extendedStatus, u"Can't delete the file or folder \"d/t\".\n\n421 Closing."));
    EXPECT_THAT(Asked(), ElementsAre(u"find d/*", u"delete d/t"));
}

TEST_F(FtpTree, AFolderThatCannotBeListedEndsIt)
{
    internet.closedFolders = {u"d/t/s1/deep"};
    EXPECT_THAT(Deleting(u"ftp://u:p@h:21/d/t", true),
                Threw(notFoundStatus, u"Couldn't find the URI \"d/t/s1/deep\".\n[uri: "
                                      u"\"ftp://u:p@h:21/d/t/s1/deep\"\nsearchPattern: "
                                      u"d/t/s1/deep/*\nExtendedError: 550 Denied.]"));
    EXPECT_EQ(internet.Calls().back(), u"find d/t/s1/deep/*");
    EXPECT_THAT(internet.Calls(u"remove"), IsEmpty());
}

// Folders in folders in folders: what waits is bounded.
TEST_F(FtpTree, AServerWithoutABottomIsLeft)
{
    const std::u16string name(255, u'n');
    std::u16string path = u"d/t";
    for (int level = 0; level < 130; ++level)
    {
        internet.folders[path] = {{name, folderBit}};
        path += u"/" + name;
    }
    std::vector<FakeEntry>& many = internet.folders[path];
    for (int i = 0; i < 900; ++i)
        many.push_back({u"f" + Decimal(static_cast<std::uint64_t>(i)), folderBit});
    EXPECT_FALSE(Deleting(u"ftp://u:p@h:21/d/t", true));
    for (int i = 0; i < 300; ++i)
        many.push_back({u"g" + Decimal(static_cast<std::uint64_t>(i)), folderBit});
    EXPECT_THAT(Deleting(u"ftp://u:p@h:21/d/t", true),
                Threw(0x80070008, u"Can't delete the file or folder \"" + path + u"\".\n\n"));
}

} // namespace
} // namespace tarnwell::test
