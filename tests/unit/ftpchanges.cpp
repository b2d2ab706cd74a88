// What creations and deletions ask a server, and in which order.
#include "unit/ftpcommandstest.h"

namespace tarnwell::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

using FtpChanges = FtpCommands;

TEST_F(FtpChanges, AFolderIsCreated)
{
    EXPECT_FALSE(Creating(u"ftp://u:p@h:21/a/b", false));
    EXPECT_THAT(Asked(), ElementsAre(u"create a/b"));
}

TEST_F(FtpChanges, CreatingWhatExistsFails)
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

TEST_F(FtpChanges, APathIsCreatedPieceByPiece)
{
    EXPECT_FALSE(Creating(u"ftp://u:p@h:21/a/b/c", true));
    EXPECT_THAT(Asked(), ElementsAre(u"find a/b/c", u"create a", u"create a/b", u"create a/b/c"));
}

TEST_F(FtpChanges, WhatIsThereOfAPathIsNoFailure)
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

TEST_F(FtpChanges, OtherRefusalsOfAPieceEndIt)
{
    internet.Fail("FtpCreateDirectoryW", ERROR_INTERNET_EXTENDED_ERROR, u"550 Already Exists");
    EXPECT_THAT(
        Creating(u"ftp://u:p@h:21/a/b/c", true),
        Threw(extendedStatus, u"Failed to create a folder at \"a\".\n\n550 Already Exists"));
    EXPECT_THAT(Asked(), ElementsAre(u"find a/b/c", u"create a"));
    internet.Fail("FtpCreateDirectoryW", ERROR_INTERNET_EXTENDED_ERROR, u"5210 521");
    EXPECT_TRUE(Creating(u"ftp://u:p@h:21/a/b/c", true));
}

TEST_F(FtpChanges, APathThatExistsIsAFailure)
{
    internet.folders[u"a"] = {};
    internet.files[u"f"] = "";
    internet.responseFails = true;
    EXPECT_THAT(Creating(u"ftp://u:p@h:21/a", true), Threw(0x800700B7, u""));
    EXPECT_THAT(Creating(u"ftp://u:p@h:21/f", true), Threw(0x800700B7, u""));
    EXPECT_THAT(internet.Calls(u"create"), IsEmpty());
}

TEST_F(FtpChanges, APathThatCannotBeLookedForIsAnotherFailure)
{
    internet.Fail("FtpFindFirstFileW", ERROR_INTERNET_CONNECTION_RESET);
    EXPECT_THAT(Creating(u"ftp://u:p@h:21/a/b", true),
                Threw(0x80072EFF, u"Failed to get attributes for the file or folder \"a/b\".\n\n"));
}

TEST_F(FtpChanges, PathsHavePrefixes)
{
    EXPECT_THAT(SplitFolderPrefixes(u"a/b/c"), ElementsAre(u"a", u"a/b", u"a/b/c"));
    EXPECT_THAT(SplitFolderPrefixes(u"a/b/"), ElementsAre(u"a", u"a/b"));
    EXPECT_THAT(SplitFolderPrefixes(u""), ElementsAre(u""));
    EXPECT_THAT(SplitFolderPrefixes(u"/a/b"), ElementsAre(u"/a", u"/a/b"));
    EXPECT_THAT(SplitFolderPrefixes(u"a//b"), ElementsAre(u"a", u"a/", u"a//b"));
    EXPECT_THAT(SplitFolderPrefixes(u"/"), IsEmpty());
}

TEST_F(FtpChanges, AFileIsDeletedWhateverIsSaidOfFolders)
{
    internet.folders[u"d"] = {{u"a.txt"}};
    EXPECT_FALSE(Deleting(u"ftp://u:p@h:21/d/a.txt", false));
    EXPECT_FALSE(Deleting(u"ftp://u:p@h:21/d/a.txt", true));
    EXPECT_THAT(Asked(),
                ElementsAre(u"find d/*", u"delete d/a.txt", u"find d/*", u"delete d/a.txt"));
}

TEST_F(FtpChanges, AnItemInTheRootIsDeletedByItsOwnPath)
{
    internet.folders[u""] = {{u"a.txt"}};
    EXPECT_FALSE(Deleting(u"ftp://u:p@h:21/a.txt", false));
    EXPECT_THAT(Asked(), ElementsAre(u"find /*", u"delete a.txt"));
}

TEST_F(FtpChanges, AFolderIsRemovedEmptyOrNot)
{
    internet.folders[u"d"] = {{u"sub", folderBit}};
    internet.folders[u"d/sub"] = {{u"x"}};
    EXPECT_FALSE(Deleting(u"ftp://u:p@h:21/d/sub", false)) << "the server's to say";
    EXPECT_THAT(Asked(), ElementsAre(u"find d/*", u"remove d/sub"));
}

TEST_F(FtpChanges, AFailedDeletionHasItsMessage)
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

// Nothing at all: nobody logs on for them.
TEST_F(FtpChanges, ControlCharactersAreRefusedUnsent)
{
    for (const char16_t* const name : {u"a\tb", u"\u0001", u"a\u001b[2J", u"\u001f", u"a\u007f"})
    {
        const std::u16string path = name + std::u16string(u"/x");
        const std::u16string address = u"ftp://u:p@h:21/" + path;
        const std::u16string quoted = u"\"" + path + u"\"";
        EXPECT_THAT(Creating(address, false),
                    Threw(0x80070057, u"Failed to create a folder at " + quoted + u"."));
        EXPECT_THAT(Creating(address, true), testing::Optional(testing::Field(
                                                 &FtpFailure::code, std::uint32_t{0x80070057})));
        for (const bool recursive : {false, true})
            EXPECT_THAT(Deleting(address, recursive),
                        Threw(0x80070057, u"Can't delete the file or folder " + quoted + u"."));
        EXPECT_THAT(Listing(address),
                    Threw(notFoundStatus, u"Couldn't find the URI " + quoted + u".\n[uri: \"" +
                                              address + u"\"\nsearchPattern: " + path +
                                              u"/*\nGetLastError(): 87]"));
        EXPECT_THAT(Finding(address),
                    testing::Optional(testing::Field(&FtpFailure::code, notFoundStatus)));
    }
    EXPECT_THAT(internet.Calls(), testing::IsEmpty());
}

} // namespace
} // namespace tarnwell::test
