// The question to the file server, and the list that is made of its answer.
#include "local/snapshots.h"
#include "support/snapshotserver.h"
#include "support/snapshotshare.h"

#include <gmock/gmock.h>

#include <atomic>
#include <thread>

namespace tarnwell::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr NTSTATUS failed = static_cast<NTSTATUS>(0xC0000001);
constexpr std::uint64_t day = 864'000'000'000;
// 1 May 2024.
constexpr std::uint64_t firstOfMay = 133590330000000000;

std::vector<std::u16string> PathsOf(const std::vector<SnapshotEntry>& entries)
{
    std::vector<std::u16string> paths;
    for (const SnapshotEntry& entry : entries)
        paths.push_back(entry.path);
    return paths;
}

std::vector<std::uint64_t> TimesOf(const std::vector<SnapshotEntry>& entries)
{
    std::vector<std::uint64_t> times;
    for (const SnapshotEntry& entry : entries)
        times.push_back(entry.time);
    return times;
}

class Snapshots : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!share.Possible())
            GTEST_SKIP() << "the share of the drive is the system's own";
        server.Hold({u"@GMT-2024.05.01-10.30.00"});
    }

    SnapshotShare share;
    SnapshotServer server;
};

TEST_F(Snapshots, AnEntrySaysWhereTheItemWasAndWhen)
{
    const std::vector<SnapshotEntry> entries = ListSnapshots(u"C:\\dir\\file.txt");
    EXPECT_THAT(PathsOf(entries),
                ElementsAre(u"\\\\localhost\\C$\\@GMT-2024.05.01-10.30.00\\dir\\file.txt"));
    EXPECT_THAT(TimesOf(entries), ElementsAre(firstOfMay));
    EXPECT_THAT(PathsOf(ListSnapshots(u"C:/dir/file.txt")),
                ElementsAre(u"\\\\localhost\\C$\\@GMT-2024.05.01-10.30.00\\dir/file.txt"));
    EXPECT_THAT(PathsOf(ListSnapshots(u"\\\\?\\C:\\a")),
                ElementsAre(u"\\\\localhost\\C$\\@GMT-2024.05.01-10.30.00\\a"));
    EXPECT_THAT(PathsOf(ListSnapshots(u"C:\\")),
                ElementsAre(u"\\\\localhost\\C$\\@GMT-2024.05.01-10.30.00\\"));
}

TEST_F(Snapshots, TheServerIsAskedForTheSizeAndThenForAll)
{
    server.Hold({u"@GMT-2024.05.01-10.30.00", u"@GMT-2024.05.02-10.30.00"});
    ASSERT_THAT(ListSnapshots(u"C:\\a"), SizeIs(2));
    ASSERT_THAT(server.calls, SizeIs(2));
    EXPECT_EQ(server.calls[0].size, 16U);
    EXPECT_EQ(server.calls[1].size, 2 * 50U + 2 + 16) << "the names, a terminator, and 16";
    for (const SnapshotServer::Call& call : server.calls)
    {
        EXPECT_EQ(call.code, 0x144064U);
        EXPECT_TRUE(call.isCleared);
        EXPECT_TRUE(call.asksPlainly);
        EXPECT_NE(call.event, nullptr);
        EXPECT_EQ(call.event, server.calls[0].event);
        EXPECT_NE(call.share, INVALID_HANDLE_VALUE);
        EXPECT_EQ(call.share, server.calls[0].share);
    }
}

TEST_F(Snapshots, NothingIsKeptBetweenTwoLists)
{
    EXPECT_THAT(ListSnapshots(u"C:\\a"), SizeIs(1));
    server.Hold({});
    EXPECT_THAT(ListSnapshots(u"C:\\a"), IsEmpty());
    EXPECT_THAT(server.calls, SizeIs(4));
}

TEST_F(Snapshots, TheNewestComesFirst)
{
    server.Hold({u"@GMT-2024.05.02-10.30.00", u"@GMT-2024.05.04-10.30.00",
                 u"@GMT-2024.05.01-10.30.00", u"@GMT-2024.05.03-10.30.00"});
    EXPECT_THAT(
        TimesOf(ListSnapshots(u"C:\\a")),
        ElementsAre(firstOfMay + 3 * day, firstOfMay + 2 * day, firstOfMay + day, firstOfMay));
}

TEST_F(Snapshots, ANameWithoutATimeComesLast)
{
    server.Hold({u"yesterday", u"@GMT-2024.13.01-10.30.00", u"@GMT-2024.05.01-10.30.00"});
    const std::vector<SnapshotEntry> entries = ListSnapshots(u"C:\\a");
    EXPECT_THAT(TimesOf(entries), ElementsAre(firstOfMay, 0U, 0U));
    EXPECT_THAT(PathsOf(entries),
                testing::UnorderedElementsAre(u"\\\\localhost\\C$\\@GMT-2024.05.01-10.30.00\\a",
                                              u"\\\\localhost\\C$\\@GMT-2024.13.01-10.30.00\\a",
                                              u"\\\\localhost\\C$\\yesterday\\a"));
}

TEST_F(Snapshots, SnapshotsOfOneTimeAreAllListed)
{
    server.Hold({u"@GMT-2024.05.01-10.30.00", u"@GMT-2024.05.01-10.30.00b"});
    EXPECT_THAT(TimesOf(ListSnapshots(u"C:\\a")), ElementsAre(firstOfMay, firstOfMay));
}

TEST_F(Snapshots, OnlyPathsOfDrivesAreAskedFor)
{
    for (const std::u16string_view path :
         {u"\\\\server\\share\\file.txt", u"file.txt", u"C:file.txt", u"\\file.txt", u"",
          u"\\\\localhost\\C$\\file.txt"})
        EXPECT_THAT(ListSnapshots(path), IsEmpty());
    EXPECT_THAT(server.calls, IsEmpty());
}

TEST_F(Snapshots, AnotherDriveHasAnotherShare)
{
    EXPECT_THAT(ListSnapshots(u"Q:\\a"), IsEmpty());
    EXPECT_THAT(server.calls, IsEmpty()) << "its share can't be opened";
}

TEST_F(Snapshots, ARefusalIsNoSnapshots)
{
    const SnapshotServer::Answer start = server.start;
    const SnapshotServer::Answer whole = server.whole;
    for (const NTSTATUS status : {failed, NTSTATUS{1}, NTSTATUS{0x40000000}})
    {
        server.start = {start.bytes, status, 0};
        EXPECT_THAT(ListSnapshots(u"C:\\a"), IsEmpty());
        server.start = {start.bytes, 0, status};
        EXPECT_THAT(ListSnapshots(u"C:\\a"), IsEmpty());
    }
    EXPECT_THAT(server.calls, SizeIs(6)) << "there is no second question";
    server.start = start;
    for (const NTSTATUS status : {failed, NTSTATUS{1}, NTSTATUS{0x40000000}})
    {
        server.whole = {whole.bytes, status, 0};
        EXPECT_THAT(ListSnapshots(u"C:\\a"), IsEmpty());
        server.whole = {whole.bytes, 0, status};
        EXPECT_THAT(ListSnapshots(u"C:\\a"), IsEmpty());
    }
    EXPECT_THAT(server.calls, SizeIs(18));
}

// A server that answers the call with this size later, from another thread.
class LateServer
{
public:
    LateServer(SnapshotServer& server, ULONG lateSize)
    {
        server.onCall = [&, lateSize](const SnapshotServer::Call& call) {
            const bool isLate =
                (call.size == SnapshotServer::startSize) == (lateSize == SnapshotServer::startSize);
            if (isLate)
                Answer(server, call);
        };
    }
    LateServer(const LateServer&) = delete;
    LateServer& operator=(const LateServer&) = delete;
    ~LateServer()
    {
        if (thread_.joinable())
            thread_.join();
    }
    bool HasAnswered() const
    {
        return hasAnswered_;
    }

private:
    void Answer(SnapshotServer& server, const SnapshotServer::Call& call)
    {
        (call.size == SnapshotServer::startSize ? server.start : server.whole).result =
            SnapshotServer::pending;
        thread_ = std::thread([this, event = call.event] {
            hasAnswered_ = true;
            EXPECT_TRUE(SetEvent(event));
        });
    }

    std::atomic<bool> hasAnswered_ = false;
    std::thread thread_;
};

TEST_F(Snapshots, ALateSizeIsWaitedForAndDropped)
{
    const LateServer late(server, 16);
    EXPECT_THAT(ListSnapshots(u"C:\\a"), IsEmpty());
    EXPECT_TRUE(late.HasAnswered());
    EXPECT_THAT(server.calls, SizeIs(1));
}

TEST_F(Snapshots, ALateListIsWaitedForAndDropped)
{
    const LateServer late(server, 0);
    EXPECT_THAT(ListSnapshots(u"C:\\a"), IsEmpty());
    EXPECT_TRUE(late.HasAnswered());
    EXPECT_THAT(server.calls, SizeIs(2));
}

TEST_F(Snapshots, ASizeThatNoBufferHasIsNotAskedFor)
{
    for (const std::uint32_t size : {0xFFFFFFF0U, 0xFFFFFFFFU})
    {
        server.calls.clear();
        server.start = {SnapshotServer::Header(1, 0, size)};
        EXPECT_THAT(ListSnapshots(u"C:\\a"), IsEmpty());
        EXPECT_THAT(server.calls, SizeIs(1));
    }
}

TEST_F(Snapshots, ASizeTooLargeOrTooSmallReadsNoMoreThanTheBuffer)
{
    const std::vector<std::u16string> tokens = {u"@GMT-2024.05.01-10.30.00",
                                                u"@GMT-2024.05.02-10.30.00"};
    server.Hold(tokens);
    server.start = {SnapshotServer::Header(2, 0, 1'000'000)};
    EXPECT_THAT(ListSnapshots(u"C:\\a"), SizeIs(2));
    EXPECT_EQ(server.calls.back().size, 1'000'016U);

    server.start = {SnapshotServer::Header(2, 0, 50)};
    EXPECT_THAT(ListSnapshots(u"C:\\a"), SizeIs(1)) << "there is room for one, and a part of one";
    server.start = {SnapshotServer::Header(2, 0, 0)};
    EXPECT_THAT(ListSnapshots(u"C:\\a"), IsEmpty());
}

TEST_F(Snapshots, ANumberTooHighListsNoMoreThanTheNames)
{
    server.whole = {SnapshotServer::Header(1, 0xFFFFFFFF, 52) +
                    SnapshotServer::NamesOf({u"@GMT-2024.05.01-10.30.00"})};
    EXPECT_THAT(ListSnapshots(u"C:\\a"), SizeIs(1));
}

TEST(SnapshotsWithoutAServer, AreNone)
{
    const SnapshotShare share;
    if (!share.Possible())
        GTEST_SKIP() << "the share of the drive is the system's own";
    const NtFsControlFileCall before = std::exchange(ntFsControlFile, nullptr);
    EXPECT_THAT(ListSnapshots(u"C:\\a"), IsEmpty());
    ntFsControlFile = before;
    EXPECT_THAT(ListSnapshots(u"C:\\a"), IsEmpty()) << "a plain folder has none either";
}

TEST(SnapshotsWithoutAShare, AreNone)
{
    SnapshotServer server;
    server.Hold({u"@GMT-2024.05.01-10.30.00"});
    EXPECT_THAT(ListSnapshots(u"Q:\\a"), IsEmpty());
    EXPECT_THAT(server.calls, IsEmpty());
}

} // namespace
} // namespace tarnwell::test
