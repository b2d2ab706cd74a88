// The earlier versions of local files, all the way: from the host's two questions over the answer
// of a file server to the bytes of each version.
#include "frame/handle.h"
#include "local/filesystem.h"
#include "platform/username.h"
#include "platform/wide.h"
#include "support/errorinfo.h"
#include "support/revisionfacts.h"
#include "support/snapshotserver.h"
#include "support/snapshotshare.h"
#include "support/tempfolder.h"

#include <gmock/gmock.h>

namespace tarnwell::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr std::u16string_view firstToken = u"@GMT-2024.05.01-10.30.00";
constexpr std::u16string_view secondToken = u"@GMT-2024.05.02-10.30.00";
constexpr std::u16string_view thirdToken = u"@GMT-2024.05.03-10.30.00";
constexpr std::uint64_t day = 864'000'000'000;
constexpr std::uint64_t firstTime = 133590330000000000;
// A file is written before the snapshot is taken.
constexpr std::uint64_t writeTime = firstTime - day;

std::u16string UserName()
{
    std::u16string name;
    EXPECT_TRUE(FindUserName(name));
    return name;
}

class EarlierVersions : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!share.Possible())
            GTEST_SKIP() << "the share of the drive is the system's own";
        server.Hold(
            {std::u16string(firstToken), std::u16string(secondToken), std::u16string(thirdToken)});
        ASSERT_EQ(MakeInstance<CWin32FileSystemObject>(nullptr, IID_IFileSystem, system.OutVoid()),
                  S_OK);
        ClearError();
    }

    static std::u16string Inside(std::u16string_view token, std::u16string_view rest)
    {
        return std::u16string(token) + u'\\' + std::u16string(rest);
    }
    std::u16string Uri(std::u16string_view token, std::u16string_view rest) const
    {
        return share.PathOf(Inside(token, rest));
    }
    void Put(std::u16string_view token, std::u16string_view rest, std::string_view bytes,
             std::uint64_t time = writeTime)
    {
        share.Put(Inside(token, rest), bytes);
        SetTime(Uri(token, rest), time);
    }
    static void SetTime(const std::u16string& path, std::uint64_t time)
    {
        const OsHandle file(CreateFileW(Wide(path), FILE_WRITE_ATTRIBUTES,
                                        FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                        FILE_FLAG_BACKUP_SEMANTICS, nullptr));
        ASSERT_TRUE(file);
        const FILETIME written{static_cast<DWORD>(time), static_cast<DWORD>(time >> 32)};
        EXPECT_TRUE(SetFileTime(file.Get(), nullptr, nullptr, &written));
    }

    VARIANT_BOOL Has(const std::u16string& path)
    {
        VARIANT_BOOL has = 7;
        const auto revisions = system.As<IFileSystemRevisions>();
        EXPECT_EQ(revisions->HasRevisions(Wide(path), 99, &has), S_OK);
        return has;
    }
    std::vector<Revision> List(const std::u16string& path)
    {
        ComPtr<IRevisions> revisions;
        EXPECT_EQ(system.As<IFileSystemRevisions>()->GetRevisions(Wide(path), 99, revisions.Out()),
                  S_OK);
        EXPECT_TRUE(revisions);
        const std::vector<Revision> list = FactsOf(revisions);
        EXPECT_FALSE(TakeError()) << "nothing here is a failure";
        return list;
    }
    static std::vector<std::u16string> IdsOf(const std::vector<Revision>& list)
    {
        std::vector<std::u16string> ids;
        for (const Revision& each : list)
            ids.push_back(each.id);
        return ids;
    }
    // The content of a file as the host gets at it.
    std::string Content(const std::u16string& uri)
    {
        ComPtr<IFile> file;
        EXPECT_EQ(system->GetFile(Wide(uri), VARIANT_TRUE, file.Out()), S_OK);
        ComPtr<IFileStream> stream;
        EXPECT_EQ(file->Open(GENERIC_READ, OPEN_EXISTING, stream.Out()), S_OK);
        char buffer[64] = {};
        ULONG size = 0;
        EXPECT_EQ(stream.As<::ISequentialStream>()->Read(buffer, sizeof buffer, &size), S_OK);
        return {buffer, size};
    }

    SnapshotShare share;
    SnapshotServer server;
    ComPtr<IFileSystem> system;
};

TEST_F(EarlierVersions, AreListedBehindTheLiveFileTheNewestFirst)
{
    Put(firstToken, u"dir\\file.txt", "one", writeTime);
    Put(secondToken, u"dir\\file.txt", "two", writeTime + day);
    Put(thirdToken, u"dir\\file.txt", "three", writeTime + 2 * day);
    EXPECT_EQ(Has(u"C:\\dir\\file.txt"), VARIANT_TRUE);

    const std::vector<Revision> list = List(u"C:\\dir\\file.txt");
    ASSERT_THAT(list, SizeIs(4));
    EXPECT_THAT(IdsOf(list), ElementsAre(u"", u"3", u"2", u"1"));
    EXPECT_EQ(list[0].description, u"Working Copy");
    EXPECT_EQ(list[0].uri, u"C:\\dir\\file.txt");
    EXPECT_EQ(list[0].modified, 0U);
    EXPECT_EQ(list[0].time, 0U);
    const std::u16string_view tokens[] = {thirdToken, secondToken, firstToken};
    for (std::size_t i = 1; i < list.size(); ++i)
    {
        EXPECT_EQ(list[i].description, u"");
        EXPECT_EQ(list[i].uri, Uri(tokens[i - 1], u"dir\\file.txt"));
        EXPECT_EQ(list[i].modified, writeTime + (3 - i) * day);
        EXPECT_EQ(list[i].time, firstTime + (3 - i) * day);
    }
}

TEST_F(EarlierVersions, AllBearThePresentUsersName)
{
    Put(firstToken, u"a", "one");
    for (const Revision& revision : List(u"C:\\a"))
        EXPECT_EQ(revision.author, UserName());
}

TEST_F(EarlierVersions, EachAddressOpensItsBytes)
{
    Put(firstToken, u"dir\\file.txt", "the oldest");
    Put(secondToken, u"dir\\file.txt", std::string_view("between\0\r\n", 10));
    Put(thirdToken, u"dir\\file.txt", "");
    const std::vector<Revision> list = List(u"C:\\dir\\file.txt");
    ASSERT_THAT(list, SizeIs(4));
    EXPECT_EQ(Content(list[1].uri), "");
    EXPECT_EQ(Content(list[2].uri), std::string_view("between\0\r\n", 10));
    EXPECT_EQ(Content(list[3].uri), "the oldest");
}

TEST_F(EarlierVersions, TheFirstAddressOpensTheLiveFile)
{
    const std::u16string path = u"C:\\live file of a test.txt";
    Put(firstToken, u"live file of a test.txt", "before");
    WriteBytes(path, "now");
    const std::vector<Revision> list = List(Uri(firstToken, u"live file of a test.txt"));
    ASSERT_THAT(list, SizeIs(2));
    EXPECT_EQ(Content(list[0].uri), "now");
    EXPECT_EQ(Content(list[1].uri), "before");
    std::filesystem::remove(std::filesystem::path(path));
}

TEST_F(EarlierVersions, WhatOnlyTheNewestSnapshotHasIsNumberOne)
{
    share.MakeFolder(firstToken);
    share.MakeFolder(secondToken);
    Put(thirdToken, u"file.txt", "new");
    EXPECT_EQ(Has(u"C:\\file.txt"), VARIANT_TRUE);
    const std::vector<Revision> list = List(u"C:\\file.txt");
    EXPECT_THAT(IdsOf(list), ElementsAre(u"", u"1"));
    EXPECT_EQ(list.back().time, firstTime + 2 * day);
}

TEST_F(EarlierVersions, AGapIsNotCounted)
{
    Put(firstToken, u"file.txt", "one");
    Put(thirdToken, u"file.txt", "three");
    const std::vector<Revision> list = List(u"C:\\file.txt");
    ASSERT_THAT(IdsOf(list), ElementsAre(u"", u"2", u"1"));
    EXPECT_EQ(list[1].uri, Uri(thirdToken, u"file.txt"));
    EXPECT_EQ(list[2].uri, Uri(firstToken, u"file.txt"));
}

TEST_F(EarlierVersions, WithoutAnyThereIsNoLiveFileEither)
{
    Put(firstToken, u"other.txt", "one");
    EXPECT_EQ(Has(u"C:\\file.txt"), VARIANT_FALSE);
    EXPECT_THAT(List(u"C:\\file.txt"), IsEmpty());
    server.Hold({});
    EXPECT_EQ(Has(u"C:\\other.txt"), VARIANT_FALSE);
    EXPECT_THAT(List(u"C:\\other.txt"), IsEmpty());
}

TEST_F(EarlierVersions, AnAddressOfOneMeansTheLiveFile)
{
    Put(firstToken, u"dir\\file.txt", "one");
    Put(secondToken, u"dir\\file.txt", "two");
    for (const std::u16string& path :
         {Uri(firstToken, u"dir\\file.txt"), std::u16string(u"\\\\?\\C:\\dir\\file.txt"),
          std::u16string(u"\\\\LocalHost\\C$\\@gmt-1999.01.01-00.00.00\\dir\\file.txt")})
    {
        EXPECT_EQ(Has(path), VARIANT_TRUE);
        const std::vector<Revision> list = List(path);
        ASSERT_THAT(IdsOf(list), ElementsAre(u"", u"2", u"1"));
        EXPECT_EQ(list[0].uri, u"C:\\dir\\file.txt");
        EXPECT_EQ(list[2].uri, Uri(firstToken, u"dir\\file.txt"));
    }
}

TEST_F(EarlierVersions, SlashesAndNamesBeyondAsciiAreKept)
{
    Put(firstToken, u"dir/\u65e5\U0001F600 x.txt", "one");
    EXPECT_EQ(Has(u"C:/dir/\u65e5\U0001F600 x.txt"), VARIANT_TRUE);
    const std::vector<Revision> list = List(u"C:/dir/\u65e5\U0001F600 x.txt");
    ASSERT_THAT(list, SizeIs(2));
    EXPECT_EQ(list[0].uri, u"C:/dir/\u65e5\U0001F600 x.txt") << "it was plain already";
    EXPECT_EQ(Content(list[1].uri), "one");
}

TEST_F(EarlierVersions, FoldersHaveThemToo)
{
    share.MakeFolder(Inside(firstToken, u"dir"));
    SetTime(Uri(firstToken, u"dir"), writeTime);
    EXPECT_EQ(Has(u"C:\\dir"), VARIANT_TRUE);
    const std::vector<Revision> list = List(u"C:\\dir");
    ASSERT_THAT(IdsOf(list), ElementsAre(u"", u"1"));
    EXPECT_EQ(list[1].modified, writeTime);
}

TEST_F(EarlierVersions, ANameWithoutATimeIsTriedAtTheEnd)
{
    server.Hold({u"old", std::u16string(firstToken)});
    Put(u"old", u"file.txt", "kept by hand");
    Put(firstToken, u"file.txt", "one");
    const std::vector<Revision> list = List(u"C:\\file.txt");
    ASSERT_THAT(IdsOf(list), ElementsAre(u"", u"2", u"1"));
    EXPECT_EQ(list[2].time, 0U);
    EXPECT_EQ(list[2].modified, writeTime);
    EXPECT_EQ(Content(list[2].uri), "kept by hand");
}

TEST_F(EarlierVersions, AreThereWhileAnotherHoldsThemAlone)
{
    Put(firstToken, u"file.txt", "one");
    const std::u16string uri = Uri(firstToken, u"file.txt");
    const OsHandle alone(
        CreateFileW(Wide(uri), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    ASSERT_TRUE(alone);
    EXPECT_EQ(Has(u"C:\\file.txt"), VARIANT_TRUE);
    EXPECT_THAT(List(u"C:\\file.txt"), SizeIs(2)) << "only their times are read";
}

TEST_F(EarlierVersions, EachQuestionLooksAnew)
{
    Put(firstToken, u"file.txt", "one");
    EXPECT_EQ(Has(u"C:\\file.txt"), VARIANT_TRUE);
    share.Remove(Inside(firstToken, u"file.txt"));
    EXPECT_EQ(Has(u"C:\\file.txt"), VARIANT_FALSE);
    EXPECT_THAT(List(u"C:\\file.txt"), IsEmpty());
}

TEST_F(EarlierVersions, OtherPathsHaveNone)
{
    Put(firstToken, u"file.txt", "one");
    for (const std::u16string& path :
         {std::u16string(u"\\\\server\\share\\file.txt"), std::u16string(u"file.txt"),
          std::u16string(u"\\\\?\\UNC\\localhost\\C$\\file.txt"), std::u16string(),
          std::u16string(u"D:\\file.txt")})
    {
        EXPECT_EQ(Has(path), VARIANT_FALSE);
        EXPECT_THAT(List(path), IsEmpty());
    }
    EXPECT_THAT(server.calls, IsEmpty());
}

TEST_F(EarlierVersions, NullIsTheEmptyPath)
{
    VARIANT_BOOL has = 7;
    const auto revisions = system.As<IFileSystemRevisions>();
    EXPECT_EQ(revisions->HasRevisions(nullptr, 0, &has), S_OK);
    EXPECT_EQ(has, VARIANT_FALSE);
    ComPtr<IRevisions> list;
    EXPECT_EQ(revisions->GetRevisions(nullptr, 0, list.Out()), S_OK);
    EXPECT_TRUE(list);
}

TEST_F(EarlierVersions, ARefusalReachesNobody)
{
    Put(firstToken, u"file.txt", "one");
    server.start.result = static_cast<NTSTATUS>(0xC0000022);
    EXPECT_EQ(Has(u"C:\\file.txt"), VARIANT_FALSE);
    EXPECT_THAT(List(u"C:\\file.txt"), IsEmpty());
}

TEST_F(EarlierVersions, ALateAnswerReachesNobody)
{
    Put(firstToken, u"file.txt", "one");
    server.start.result = SnapshotServer::pending;
    server.onCall = [](const SnapshotServer::Call& call) {
        EXPECT_TRUE(SetEvent(call.event));
    };
    EXPECT_EQ(Has(u"C:\\file.txt"), VARIANT_FALSE);
    EXPECT_THAT(List(u"C:\\file.txt"), IsEmpty());
}

TEST_F(EarlierVersions, NoPlaceForTheAnswerIsRefusedUnasked)
{
    const auto revisions = system.As<IFileSystemRevisions>();
    EXPECT_EQ(revisions->HasRevisions(Wide(u"C:\\a"), 0, nullptr), E_POINTER);
    EXPECT_EQ(TakeErrorText(), u"Internal error (null pointer argument).");
    EXPECT_EQ(revisions->GetRevisions(Wide(u"C:\\a"), 0, nullptr), E_POINTER);
    const auto error = TakeError();
    ASSERT_TRUE(error);
    EXPECT_EQ(error->text, u"Internal error (null pointer argument).");
    EXPECT_TRUE(error->interfaceId == IID_IFileSystemRevisions);
    EXPECT_THAT(server.calls, IsEmpty());
}

TEST(EarlierVersionsOfADrive, AreLookedForUnderItsLetter)
{
    constexpr char16_t letter = u'k';
    SnapshotShare share(letter);
    if (!share.Possible())
        GTEST_SKIP() << "the share of the drive is the system's own";
    SnapshotServer server;
    server.Hold({std::u16string(firstToken)});
    share.Put(std::u16string(firstToken) + u"\\a", "one");
    ComPtr<IFileSystemRevisions> system;
    ASSERT_EQ(
        MakeInstance<CWin32FileSystemObject>(nullptr, IID_IFileSystemRevisions, system.OutVoid()),
        S_OK);
    VARIANT_BOOL has = VARIANT_FALSE;
    EXPECT_EQ(
        system->HasRevisions(Wide(u"\\\\localhost\\k$\\@gmt-2024.05.01-10.30.00\\a"), 0, &has),
        S_OK);
    EXPECT_EQ(has, VARIANT_TRUE);
}

} // namespace
} // namespace tarnwell::test
