// The deletion of a tree where folders may be links.
#include "unit/ftptreetest.h"

namespace tarnwell::test
{
namespace
{

using testing::ElementsAre;

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

TEST_F(FtpTree, TheFirstFailureEndsIt)
{
    internet.Fail("FtpDeleteFileW", ERROR_INTERNET_EXTENDED_ERROR, u"550 A folder.");
    internet.Fail("FtpDeleteFileW", ERROR_INTERNET_EXTENDED_ERROR, u"550 Denied.");
    EXPECT_THAT(
        Deleting(u"ftp://u:p@h:21/d/t", true),
        Threw(extendedStatus, u"Can't delete the file or folder \"d/t/f1\".\n\n550 Denied."));
    EXPECT_THAT(Asked(), ElementsAre(u"find d/*", u"delete d/t", u"find d/t/*", u"delete d/t/f1"));
}

} // namespace
} // namespace tarnwell::test
