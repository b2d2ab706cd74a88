// The deletion of a tree, as far as it is the same everywhere.
#include "unit/ftptreetest.h"

#include "frame/text.h"

namespace tarnwell::test
{
namespace
{

using testing::IsEmpty;

TEST_F(FtpTree, OneSessionServesAllOfIt)
{
    EXPECT_FALSE(Deleting(u"ftp://u:p@h:21/d/t", true));
    EXPECT_EQ(internet.Calls(u"connect").size(), 1U);
    EXPECT_EQ(internet.Open().size(), 2U) << "a root and a connection";
}

TEST_F(FtpTree, AFolderThatCannotBeRemovedEndsIt)
{
    internet.Fail("FtpRemoveDirectoryW", ERROR_INTERNET_EXTENDED_ERROR, u"550 Not empty.");
    EXPECT_THAT(Deleting(u"ftp://u:p@h:21/d/t", true),
                Threw(extendedStatus,
                      u"Can't delete the file or folder \"d/t/s1/deep\".\n\n550 Not empty."));
    EXPECT_EQ(internet.Calls().back(), u"remove d/t/s1/deep");
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

// What was in front of it in the listing is gone by then.
TEST_F(FtpTree, ANameWithAControlCharacterEndsItUnsent)
{
    internet.folders[u"d/t/s1/deep"] = {{u"a\u0007b"}};
    EXPECT_THAT(Deleting(u"ftp://u:p@h:21/d/t", true),
                Threw(0x80070057, u"Can't delete the file or folder \"d/t/s1/deep/a\u0007b\"."));
    EXPECT_EQ(internet.Calls().back(), u"find d/t/s1/deep/*");
    internet.folders[u"d/t/s1/deep"] = {{u"a\u0007b", folderBit}};
    EXPECT_THAT(Deleting(u"ftp://u:p@h:21/d/t", true),
                Threw(0x80070057, u"Can't delete the file or folder \"d/t/s1/deep/a\u0007b\"."));
    EXPECT_EQ(internet.Calls().back(), u"find d/t/s1/deep/*");
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
    // Whether these can be entered is another question.
    const std::optional<FtpFailure> other = Deleting(u"ftp://u:p@h:21/d/t", true);
    EXPECT_TRUE(!other || other->code == notFoundStatus);
    for (int i = 0; i < 300; ++i)
        many.push_back({u"g" + Decimal(static_cast<std::uint64_t>(i)), folderBit});
    EXPECT_THAT(Deleting(u"ftp://u:p@h:21/d/t", true),
                Threw(0x80070008, u"Can't delete the file or folder \"" + path + u"\".\n\n"));
}

} // namespace
} // namespace tarnwell::test
