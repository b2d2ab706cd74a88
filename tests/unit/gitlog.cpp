// What is made of the log that the Git client prints.
#include "git/gitparser.h"
#include "support/opened.h"

#include <gtest/gtest.h>

namespace tarnwell::test
{
namespace
{

class GitLog : public testing::Test
{
protected:
    RevisionList Read(std::string_view output) const
    {
        return ReadGitLog(u"/r/a.txt", OpenedWith(folder_, output).Get());
    }

    const TempFolder folder_;
};

constexpr std::string_view oneCommit = "abc\nAnn\n1234567890\n\tSubject\n!\n";

TEST_F(GitLog, RecordsFollowTheWorkingCopy)
{
    const auto records = Read(oneCommit);
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records[0].description, u"Working Copy");
    EXPECT_EQ(records[0].uri, u"/r/a.txt");
    EXPECT_EQ(records[0].id + records[0].author, u"");
    EXPECT_EQ(records[0].modifiedTime + records[0].revisionTime, 0U);
    EXPECT_EQ(records[1].id, u"abc");
    EXPECT_EQ(records[1].author, u"Ann");
    EXPECT_EQ(records[1].description, u"Subject");
    EXPECT_EQ(records[1].modifiedTime, 128790414900000000U);
    EXPECT_EQ(records[1].revisionTime, 128790414900000000U);
    EXPECT_EQ(records[1].uri, u"git:///r/a.txt#abc");
}

TEST_F(GitLog, RecordsAreToldInAnyOrderAndAgain)
{
    const auto records = Read(std::string(oneCommit) + "def\nBob\n2\n\tOther\n!\n");
    ASSERT_EQ(records.size(), 3U);
    for (int i = 0; i < 2; ++i)
    {
        EXPECT_EQ(records[2].uri, u"git:///r/a.txt#def");
        EXPECT_EQ(records[2].description, u"Other");
        EXPECT_EQ(records[1].uri, u"git:///r/a.txt#abc");
        EXPECT_EQ(records[1].description, u"Subject");
    }
}

TEST_F(GitLog, NothingMeansNoWorkingCopyEither)
{
    EXPECT_TRUE(Read("").empty());
    EXPECT_TRUE(Read("abc\nAnn\n1\n").empty());
}

TEST_F(GitLog, AnUnfinishedRecordIsDropped)
{
    EXPECT_EQ(Read(std::string(oneCommit) + "def\nBob\n").size(), 2U);
    EXPECT_EQ(Read(std::string(oneCommit) + "def\nBob\n1\n\tSubject\n").size(), 2U);
    EXPECT_EQ(Read(std::string(oneCommit) + "def\nBob\n1\n\tSubject\n!").size(), 3U);
}

TEST_F(GitLog, AnEmptyAuthorEndsTheList)
{
    EXPECT_EQ(
        Read(std::string(oneCommit) + "def\n\n1\n\tSubject\n!\n" + std::string(oneCommit)).size(),
        2U);
}

TEST_F(GitLog, SubjectsKeepNoBlanksAround)
{
    EXPECT_EQ(Read("a\nb\n1\n\t   Subject \t\n!\n")[1].description, u"Subject");
    EXPECT_EQ(Read("a\nb\n1\n\t\n!\n")[1].description, u"");
    EXPECT_EQ(Read("a\nb\n1\n\t!\n!\n")[1].description, u"!");
    EXPECT_EQ(Read("a\nb\n1\n\tone\n\ttwo\n!\n")[1].description, u"one\ntwo");
}

TEST_F(GitLog, LinesMayEndInCarriageReturns)
{
    const auto records = Read("abc\r\nAnn\r\n1\r\n\tSubject\r\n!\r\n");
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records[1].id, u"abc");
    EXPECT_EQ(records[1].author, u"Ann");
}

TEST_F(GitLog, TextIsUtf8AndIllFormedTextIsReplaced)
{
    EXPECT_EQ(Read("a\n\xC3\x9Cn\xC3\xAF\n1\n\t\xF0\x9F\x98\x80\n!\n")[1].author, u"\u00dcn\u00ef");
    EXPECT_EQ(Read("a\n\xFFx\n1\n\ts\n!\n")[1].author, u"\uFFFDx");
}

} // namespace
} // namespace tarnwell::test
