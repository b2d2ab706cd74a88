// Lists of earlier versions whose platform calls fail one by one: none of it reaches the host.
#include "faults/local.h"

#include "support/snapshotserver.h"
#include "support/snapshotshare.h"
#include "support/treesink.h"

namespace tarnwell::test
{

namespace
{

constexpr std::size_t threeSnapshots = 3;

class FailingSnapshots : public testing::Test
{
protected:
    FailingSnapshots()
    {
        const std::vector<std::u16string> tokens = {
            u"@GMT-2024.05.03-10.30.00", u"@GMT-2024.05.02-10.30.00", u"@GMT-2024.05.01-10.30.00"};
        server.Hold(tokens);
        for (const std::u16string& token : tokens)
            share.Put(token + u"\\a.txt", "old");
    }

    VARIANT_BOOL Has() const
    {
        VARIANT_BOOL has = 7;
        EXPECT_THAT(ResultOf([&] { return revisions->HasRevisions(u"C:\\a.txt", 0, &has); }),
                    FailsWith(S_OK, u"(none)"));
        return has;
    }
    ComPtr<IRevisions> List() const
    {
        ComPtr<IRevisions> list;
        EXPECT_THAT(ResultOf([&] { return revisions->GetRevisions(u"C:\\a.txt", 0, list.Out()); }),
                    FailsWith(S_OK, u"(none)"));
        return list;
    }
    // Of the versions, without the live file.
    std::size_t Count() const
    {
        std::uint32_t count = 0;
        EXPECT_EQ(List()->GetCount(&count), S_OK);
        return count == 0 ? 0 : count - 1;
    }
    static std::u16string TextOf(const ComPtr<IRevisions>& list, std::int32_t index,
                                 HRESULT (IRevision::*get)(BSTR*))
    {
        ComPtr<IRevision> revision;
        EXPECT_EQ(list->GetItem(index, revision.Out()), S_OK);
        Bstr text;
        EXPECT_EQ((revision.Get()->*get)(text.Out()), S_OK);
        return std::u16string(text.View());
    }

    const Local local;
    SnapshotShare share;
    SnapshotServer server;
    ComPtr<IFileSystemRevisions> revisions = local.system.As<IFileSystemRevisions>();
};

TEST_F(FailingSnapshots, WithoutAnEventNobodyIsAsked)
{
    Faults faults;
    faults.Fail("CreateEventW", 1, ERROR_NOT_ENOUGH_MEMORY);
    EXPECT_EQ(Count(), 0U);
    EXPECT_EQ(faults.Calls("CreateFileW"), 0);
    EXPECT_EQ(faults.Calls("CloseHandle"), 0) << "there is nothing to close";
    EXPECT_TRUE(server.calls.empty());
}

TEST_F(FailingSnapshots, WithoutTheShareNobodyIsAsked)
{
    Faults faults;
    faults.Fail("CreateFileW", 1, ERROR_ACCESS_DENIED);
    EXPECT_EQ(Count(), 0U);
    EXPECT_EQ(faults.Calls("CreateFileW"), 1);
    EXPECT_EQ(faults.Calls("CloseHandle"), 1) << "the event";
    EXPECT_TRUE(server.calls.empty());
}

TEST_F(FailingSnapshots, ARefusalClosesBoth)
{
    for (SnapshotServer::Answer* const answer : {&server.start, &server.whole})
    {
        const NTSTATUS denied = static_cast<NTSTATUS>(0xC0000022);
        const NTSTATUS before = std::exchange(answer->result, denied);
        const Faults faults;
        EXPECT_EQ(Count(), 0U);
        EXPECT_EQ(faults.Calls("CloseHandle"), 2);
        EXPECT_EQ(faults.Calls("WaitForSingleObject"), 0);
        answer->result = before;
    }
}

TEST_F(FailingSnapshots, ALateAnswerIsWaitedForAndClosesBoth)
{
    server.onCall = [](const SnapshotServer::Call& call) {
        SetEvent(call.event);
    };
    for (SnapshotServer::Answer* const answer : {&server.start, &server.whole})
    {
        const NTSTATUS before = std::exchange(answer->result, SnapshotServer::pending);
        const Faults faults;
        EXPECT_EQ(Count(), 0U);
        EXPECT_EQ(faults.Calls("WaitForSingleObject"), 1);
        EXPECT_EQ(faults.Calls("CloseHandle"), 2);
        answer->result = before;
    }
}

TEST_F(FailingSnapshots, AWaitThatFailsEndsAllTheSame)
{
    server.start.result = SnapshotServer::pending;
    Faults faults;
    faults.Fail("WaitForSingleObject", 1, ERROR_INVALID_HANDLE);
    EXPECT_EQ(Count(), 0U);
    EXPECT_EQ(faults.Failures(), 1);
}

TEST_F(FailingSnapshots, AllIsClosedInTheEnd)
{
    const Faults faults;
    EXPECT_EQ(Count(), threeSnapshots);
    EXPECT_EQ(faults.Calls("CreateFileW"), 4);
    EXPECT_EQ(faults.Calls("CloseHandle"), 5) << "the event, the share, and each version";
}

TEST_F(FailingSnapshots, TheQuestionEndsAtTheFirstThatOpens)
{
    {
        const Faults faults;
        EXPECT_EQ(Has(), VARIANT_TRUE);
        EXPECT_EQ(faults.Calls("CreateFileW"), 2) << "the share and the newest version";
        EXPECT_EQ(faults.Calls("GetFileTime"), 0);
        EXPECT_EQ(faults.Calls("CloseHandle"), 3);
    }
    Faults faults;
    faults.Fail("CreateFileW", 2, ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(Has(), VARIANT_TRUE);
    EXPECT_EQ(faults.Calls("CreateFileW"), 3);
}

TEST_F(FailingSnapshots, AVersionThatCannotBeOpenedIsLeftOut)
{
    Faults faults;
    faults.Fail("CreateFileW", 3, ERROR_ACCESS_DENIED);
    const ComPtr<IRevisions> list = List();
    EXPECT_EQ(faults.Calls("GetFileTime"), 2) << "it is not asked for its time";
    std::uint32_t count = 0;
    EXPECT_EQ(list->GetCount(&count), S_OK);
    ASSERT_EQ(count, 3U);
    EXPECT_EQ(TextOf(list, 1, &IRevision::GetUri),
              share.PathOf(u"@GMT-2024.05.03-10.30.00\\a.txt"));
    EXPECT_EQ(TextOf(list, 1, &IRevision::GetRevisionId), u"2");
    EXPECT_EQ(TextOf(list, 2, &IRevision::GetUri),
              share.PathOf(u"@GMT-2024.05.01-10.30.00\\a.txt"));
    EXPECT_EQ(TextOf(list, 2, &IRevision::GetRevisionId), u"1");
}

TEST_F(FailingSnapshots, AVersionWithoutATimeIsLeftOutOfTheList)
{
    for (int call = 1; call <= 3; ++call)
    {
        Faults faults;
        faults.Fail("GetFileTime", call, ERROR_BUSY);
        EXPECT_EQ(Count(), threeSnapshots - 1);
        EXPECT_EQ(faults.Calls("CloseHandle"), 5);
    }
}

TEST_F(FailingSnapshots, WithoutTheUsersNameTheAuthorIsEmpty)
{
    Faults faults;
    faults.Fail("FindUserName", 1, ERROR_BUSY);
    const ComPtr<IRevisions> list = List();
    for (std::int32_t i = 0; i < 4; ++i)
        EXPECT_EQ(TextOf(list, i, &IRevision::GetAuthor), u"");
}

TEST_F(FailingSnapshots, AListThatCannotBeMadeIsReported)
{
    Faults faults;
    faults.Fail("InitializeCriticalSectionEx", 1, ERROR_NOT_ENOUGH_MEMORY);
    ComPtr<IRevisions> list;
    EXPECT_THAT(ResultOf([&] { return revisions->GetRevisions(u"C:\\a.txt", 0, list.Out()); }),
                FailsWith(StatusFromError(ERROR_NOT_ENOUGH_MEMORY),
                          u"Failed to create a support object. "));
    EXPECT_FALSE(list);
}

TEST_F(FailingSnapshots, ATreesItemsAreGivenWhileTheirFolderIsRead)
{
    for (const char16_t* const name : {u"a", u"b", u"c"})
        share.Put(u"@GMT-2024.05.03-10.30.00\\tree/" + std::u16string(name), "x");
    ComPtr<ITree> tree;
    ASSERT_EQ(
        local.system.As<IFileSystemTrees>()->OpenTree(u"C:\\tree", nullptr, nullptr, tree.Out()),
        S_OK);
    const Faults faults;
    std::vector<int> reads;
    TreeSink sink;
    sink.answer = [&] {
        reads.push_back(faults.Calls("FindNextFileW"));
        return S_OK;
    };
    EXPECT_EQ(tree->List(nullptr, VARIANT_FALSE, &sink), S_OK);
    ASSERT_EQ(reads.size(), 3U);
    EXPECT_LT(reads[0], reads[1]);
    EXPECT_LT(reads[1], reads[2]);
    EXPECT_LT(reads[2], faults.Calls("FindNextFileW"));
}

} // namespace

} // namespace tarnwell::test
