// The deletion of a tree where a folder is what the system calls one.
#include "unit/ftptreetest.h"

namespace tarnwell::test
{
namespace
{

using testing::ElementsAre;

TEST_F(FtpTree, FilesGoBeforeFoldersAndFoldersInTheirOrder)
{
    EXPECT_FALSE(Deleting(u"ftp://u:p@h:21/d/t", true));
    EXPECT_THAT(Asked(), ElementsAre(u"find d/*", u"find d/t/*", u"delete d/t/f1", //
                                     u"delete d/t/f2", u"delete d/t/f3",           //
                                     u"find d/t/s1/*", u"delete d/t/s1/g",         //
                                     u"find d/t/s1/deep/*", u"remove d/t/s1/deep", //
                                     u"remove d/t/s1", u"find d/t/s2/*",           //
                                     u"delete d/t/s2/h", u"remove d/t/s2", u"remove d/t"));
}

TEST_F(FtpTree, TheFirstFailureEndsIt)
{
    internet.Fail("FtpDeleteFileW", ERROR_INTERNET_EXTENDED_ERROR, u"550 Denied.");
    EXPECT_THAT(
        Deleting(u"ftp://u:p@h:21/d/t", true),
        Threw(extendedStatus, u"Can't delete the file or folder \"d/t/f1\".\n\n550 Denied."));
    EXPECT_THAT(Asked(), ElementsAre(u"find d/*", u"find d/t/*", u"delete d/t/f1"));
}

} // namespace
} // namespace tarnwell::test
