// Mercurial addresses, command lines, and what is made of the client's log.
#include "mercurial/hgcommands.h"

#include "frame/exception.h"
#include "mercurial/hgparser.h"
#include "mercurial/hguri.h"
#include "support/opened.h"

#include <gtest/gtest.h>

namespace tarnwell::test
{
namespace
{

TEST(HgUri, IsTheTwinOfAGitAddress)
{
    const HGUri uri(u"hg://C:\\x\\a.txt#12");
    EXPECT_EQ(uri.GetScheme(), u"hg");
    EXPECT_EQ(uri.GetPath(), u"C:\\x\\a.txt#12");
    EXPECT_EQ(uri.GetUser() + uri.GetPassword() + uri.GetHost(), u"");
    EXPECT_EQ(uri.GetPort(), noPort);
    EXPECT_EQ(uri.Clone()->GetText(), u"hg://C:\\x\\a.txt");
    EXPECT_NE(dynamic_cast<const HGUri*>(uri.Clone().get()), nullptr);
    EXPECT_EQ(uri.ForComparison()->GetText(), u"hg://C:\\x\\a.txt");
    EXPECT_EQ(uri.ForDisplay()->GetText(), u"hg://C:\\x\\a.txt#12");
}

TEST(HgArguments, AreExactlyThese)
{
    EXPECT_EQ(HgLogArguments(u"C:\\r\\a b.txt"),
              u"log --template \"{rev}\n{author}\n{date}\n\t{desc|tabindent}\n!\n\" "
              u"\"C:\\r\\a b.txt\"");
    EXPECT_EQ(HgCatArguments(u"12", u"C:\\r\\a.txt"), u"cat -r \"12\" \"C:\\r\\a.txt\"");
    EXPECT_EQ(HgCatArguments(std::nullopt, u"C:\\r\\a.txt"), u"cat \"C:\\r\\a.txt\"");
    EXPECT_EQ(HgCatArguments(u"", u"/r/a.txt"), u"cat -r \"\" \"/r/a.txt\"");
}

TEST(HgArguments, AQuoteInAValueStaysInIt)
{
    EXPECT_TRUE(HgLogArguments(u"a\"b").ends_with(u" \"a\\\"b\""));
    EXPECT_EQ(HgCatArguments(u"1\"2", u"a\"b\\"), u"cat -r \"1\\\"2\" \"a\\\"b\\\\\"");
}

class HgLog : public testing::Test
{
protected:
    RevisionList Read(std::string_view output) const
    {
        return ReadHgLog(u"/r/a.txt", OpenedWith(folder_, output).Get());
    }

    const TempFolder folder_;
};

TEST_F(HgLog, RecordsFollowTheWorkingCopy)
{
    const auto records = Read("12\nAnn <a@b>\n1234567890.0-3600\n\tone\n\ttwo\n\tthree\n!\n"
                              "11\nBob\n1234567890.0+0\n\tone\n!\n");
    ASSERT_EQ(records.size(), 3U);
    EXPECT_EQ(records[0].description, u"Working Copy");
    EXPECT_EQ(records[0].uri, u"/r/a.txt");
    EXPECT_EQ(records[1].id, u"12");
    EXPECT_EQ(records[1].author, u"Ann <a@b>");
    EXPECT_EQ(records[1].description, u"one\ntwo\nthree");
    EXPECT_EQ(records[1].uri, u"hg:///r/a.txt#12");
    EXPECT_EQ(records[1].modifiedTime, 128790414900000000U);
    EXPECT_EQ(records[2].revisionTime, 128790414900000000U);
}

TEST_F(HgLog, DescriptionsKeepWhatStandsAtTheirEnd)
{
    EXPECT_EQ(Read("1\na\n1\n\tone  \n\t \n!\n")[1].description, u"one  \n");
    EXPECT_EQ(Read("1\na\n1\n\t!\n!\n")[1].description, u"!");
    EXPECT_EQ(Read("1\na\n1\n\t\n!\n")[1].description, u"");
    EXPECT_EQ(Read("1\na\n1\n\t \n\t \n\tone\n!\n")[1].description, u"one");
}

TEST_F(HgLog, AnEmptyLineEndsTheListAndNewerOnesStay)
{
    const auto records = Read("3\na\n1\n\tnewest\n!\n2\na\n1\n\tone\n\n\ttwo\n!\n"
                              "1\na\n1\n\toldest\n!\n");
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records[1].description, u"newest");
}

} // namespace
} // namespace tarnwell::test
