// The operations of the file system: after which outcomes a session goes back to the pool, and what
// the user is asked.
#include "ftp/ftpoperations.h"

#include "support/fakeprogress.h"
#include "unit/ftptest.h"

#include <functional>

namespace tarnwell::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

const std::u16string base = u"ftp://u:p@h/";

class FtpOperations : public FtpTest
{
protected:
    FtpOperations()
    {
        internet.folders[u"d"] = {{u"a"}, {u"b"}};
    }

    // How many sessions wait after `call`, which fails or doesn't.
    std::size_t KeptAfter(const std::function<void()>& call, bool fails)
    {
        bool failed = false;
        try
        {
            call();
        }
        catch (const ComException&)
        {
            failed = true;
        }
        EXPECT_EQ(failed, fails);
        return DrainPool(internet);
    }

    void Query(const std::u16string& path = u"d/a")
    {
        FtpQueryItem(user, FTPUri(base + path));
    }
    void List(const std::u16string& path = u"d")
    {
        FtpQueryFolderItems(user, FTPUri(base + path));
    }
    void Create(bool recursive = false)
    {
        FtpCreateFolderUri(user, FTPUri(base + u"new"), recursive);
    }
    void Delete(bool noConfirm = true, const std::u16string& path = u"d/a")
    {
        FtpDeleteUri(user, FTPUri(base + path), noConfirm, false);
    }
    void DeleteList(FakeItemList list, bool noConfirm = true)
    {
        FtpDeleteUriList(user, list, noConfirm, false);
    }
};

TEST_F(FtpOperations, SuccessKeepsTheSession)
{
    EXPECT_EQ(KeptAfter([&] { Query(); }, false), 1U);
    EXPECT_EQ(KeptAfter([&] { List(); }, false), 1U);
    EXPECT_EQ(KeptAfter([&] { Create(); }, false), 1U);
    EXPECT_EQ(KeptAfter([&] { Delete(); }, false), 1U);
}

TEST_F(FtpOperations, WhatIsNotThereKeepsTheSessionOfQuestionsOnly)
{
    EXPECT_EQ(KeptAfter([&] { Query(u"d/none"); }, true), 1U);
    EXPECT_EQ(KeptAfter([&] { List(u"none"); }, true), 1U);
    internet.Fail("FtpCreateDirectoryW", ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(KeptAfter([&] { Create(); }, true), 1U);
    EXPECT_EQ(KeptAfter([&] { Delete(true, u"d/none"); }, true), 0U);
}

TEST_F(FtpOperations, AnyOtherFailureDropsIt)
{
    internet.Fail("InternetConnectW", 12029);
    EXPECT_EQ(KeptAfter([&] { Query(); }, true), 0U);
    internet.Fail("FtpCreateDirectoryW", 12003, u"550 No.");
    EXPECT_EQ(KeptAfter([&] { Create(); }, true), 0U);
    internet.Fail("FtpFindFirstFileW", 12031);
    EXPECT_EQ(KeptAfter([&] { Create(true); }, true), 0U);
    internet.Fail("FtpDeleteFileW", 12003, u"550 No.");
    EXPECT_EQ(KeptAfter([&] { Delete(); }, true), 0U);
    EXPECT_THAT(internet.Open(), IsEmpty());
}

TEST_F(FtpOperations, ManyInARowLogOnOnce)
{
    for (int i = 0; i < 10; ++i)
    {
        Query();
        List();
        EXPECT_THROW(List(u"none"), ComException);
    }
    EXPECT_EQ(internet.Calls(u"connect").size(), 1U);
}

TEST_F(FtpOperations, PathsShareASessionAndPasswordsDoNot)
{
    Query();
    FtpQueryFolderItems(user, FTPUri(u"ftp://u:p@h/d/"));
    EXPECT_EQ(internet.Calls(u"connect").size(), 1U);
    FtpQueryFolderItems(user, FTPUri(u"ftp://u@h/d"));
    EXPECT_EQ(internet.Calls(u"connect").size(), 2U);
}

TEST_F(FtpOperations, ADeadConnectionDoesNotLiveInThePool)
{
    List();
    internet.Fail("FtpFindFirstFileW", 12031);
    EXPECT_THROW(List(), ComException);
    List();
    EXPECT_EQ(internet.Calls(u"connect").size(), 2U);
}

TEST_F(FtpOperations, TheQuestionShowsThePathAndNoPassword)
{
    Delete(false);
    ASSERT_EQ(internet.questions.size(), 1U);
    EXPECT_EQ(WithLineFeeds(internet.questions[0]),
              u"Are you sure that you want to delete this item?\n\nd/a");
    EXPECT_THAT(internet.Calls(u"delete"), ElementsAre(u"delete d/a"));
    EXPECT_THAT(host->Calls(), ElementsAre(u"GetWindow"));
}

TEST_F(FtpOperations, AnythingButAYesAsksNothingOfTheServer)
{
    for (const int answer : {7, 2, 0, 1})
    {
        internet.answer = answer;
        Delete(false);
        DeleteList(FakeItemList({base + u"d/a"}), false);
    }
    EXPECT_EQ(internet.questions.size(), 8U);
    EXPECT_THAT(internet.Calls(), IsEmpty());
}

TEST_F(FtpOperations, AListIsAskedAboutOnce)
{
    DeleteList(FakeItemList({base + u"d/a", base + u"d/b"}), false);
    EXPECT_THAT(internet.questions,
                ElementsAre(u"Are you sure that you want to delete these items?"));
    EXPECT_THAT(internet.Calls(u"delete"), ElementsAre(u"delete d/a", u"delete d/b"));
    EXPECT_EQ(internet.Calls(u"connect").size(), 1U);
}

TEST_F(FtpOperations, EntriesThatCannotBeHadAreSkipped)
{
    DeleteList(FakeItemList({std::nullopt, base + u"d/a", std::nullopt, base + u"d/b"}));
    EXPECT_EQ(internet.Calls(u"delete").size(), 2U);
    EXPECT_THAT(internet.questions, IsEmpty());
}

TEST_F(FtpOperations, AListThatIsEmptyOrCannotBeCountedIsDone)
{
    DeleteList(FakeItemList({}));
    FakeItemList negative({base + u"d/a"});
    negative.count = -1;
    DeleteList(negative);
    negative.count = std::nullopt;
    DeleteList(negative);
    EXPECT_THAT(internet.Calls(), IsEmpty());
}

TEST_F(FtpOperations, TheFirstFailureEndsAList)
{
    EXPECT_THROW(DeleteList(FakeItemList({base + u"d/none", base + u"d/a"})), ComException);
    EXPECT_THAT(internet.Calls(u"delete"), IsEmpty());
    EXPECT_THROW(DeleteList(FakeItemList({u"c:\\x", base + u"d/a"})), ComException);
    EXPECT_THROW(DeleteList(FakeItemList({u"", base + u"d/a"})), ComException);
    EXPECT_THAT(internet.Calls(u"delete"), IsEmpty());
}

} // namespace
} // namespace tarnwell::test
