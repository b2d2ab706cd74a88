// Histories and trees of local items, out of the snapshots that a stand-in for the file server
// names: from the host's question to the bytes.
#include "frame/handle.h"
#include "local/filesystem.h"
#include "platform/wide.h"
#include "support/errorinfo.h"
#include "support/historysink.h"
#include "support/snapshotserver.h"
#include "support/snapshotshare.h"
#include "support/tempfolder.h"
#include "support/treesink.h"

#include <tarnwell/pointers.h>

#include <gmock/gmock.h>

namespace tarnwell::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class LocalHistories : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!share.Possible())
            GTEST_SKIP() << "the share of the drive is the system's own";
        server.Hold({first, second, third});
        ASSERT_EQ(MakeInstance<CWin32FileSystemObject>(nullptr, IID_IFileSystem, system.OutVoid()),
                  S_OK);
        ClearError();
    }

    // Behind the first backslash, "/" stands between the names of what the share holds.
    void Put(const std::u16string& token, std::u16string_view rest, std::string_view bytes)
    {
        share.Put(token + u'\\' + std::u16string(rest), bytes);
    }
    void SetTime(const std::u16string& token, std::u16string_view rest, std::uint64_t time)
    {
        const OsHandle file(CreateFileW(Wide(Address(token, rest)), FILE_WRITE_ATTRIBUTES,
                                        FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                        FILE_FLAG_BACKUP_SEMANTICS, nullptr));
        ASSERT_TRUE(file);
        const FILETIME written{static_cast<DWORD>(time), static_cast<DWORD>(time >> 32)};
        EXPECT_TRUE(SetFileTime(file.Get(), nullptr, nullptr, &written));
    }
    std::u16string Address(const std::u16string& token, std::u16string_view rest) const
    {
        return share.PathOf(token + u'\\' + std::u16string(rest));
    }

    HRESULT Read(const std::u16string& path, HistorySink& sink, HistoryOptions options = Wanted(),
                 const char16_t* revision = nullptr)
    {
        return system.As<IFileSystemHistory>()->ReadHistory(
            Wide(path), reinterpret_cast<const OLECHAR*>(revision), &options, &sink);
    }
    std::vector<std::u16string> Ids(const std::u16string& path, HistoryOptions options = Wanted(),
                                    const char16_t* revision = nullptr)
    {
        HistorySink sink;
        EXPECT_EQ(Read(path, sink, options, revision), S_OK);
        std::vector<std::u16string> ids;
        for (const HistoryEntry& entry : sink.entries)
            ids.push_back(entry.id);
        return ids;
    }
    void ExpectBothFail(const std::u16string& path, HRESULT status, std::u16string_view message,
                        const char16_t* revision = nullptr)
    {
        HistorySink sink;
        EXPECT_EQ(Read(path, sink, Wanted(HistoryWorkingCopy), revision), status);
        EXPECT_THAT(sink.entries, IsEmpty());
        ExpectText(message);
        ComPtr<ITree> tree;
        EXPECT_EQ(Open(path, tree, revision), status);
        EXPECT_FALSE(tree);
        ExpectText(message);
    }
    static void ExpectText(std::u16string_view message)
    {
        const auto error = TakeError();
        ASSERT_TRUE(error);
        EXPECT_TRUE(error->text.starts_with(message)) << testing::PrintToString(error->text);
    }

    HRESULT Open(const std::u16string& path, ComPtr<ITree>& tree,
                 const char16_t* revision = nullptr, ICopyProgress* progress = nullptr)
    {
        return system.As<IFileSystemTrees>()->OpenTree(
            Wide(path), reinterpret_cast<const OLECHAR*>(revision), progress, tree.Out());
    }
    ComPtr<ITree> Tree(const std::u16string& path, const char16_t* revision = nullptr)
    {
        ComPtr<ITree> tree;
        EXPECT_EQ(Open(path, tree, revision), S_OK);
        return tree;
    }
    static std::u16string IdOf(const ComPtr<ITree>& tree)
    {
        Bstr id;
        EXPECT_EQ(tree->GetRevisionId(id.Out()), S_OK);
        return std::u16string(id.View());
    }
    static std::vector<TreeEntry> List(const ComPtr<ITree>& tree, const std::u16string& name = {},
                                       bool recursive = false)
    {
        TreeSink sink;
        EXPECT_EQ(tree->List(Wide(name), recursive ? VARIANT_TRUE : VARIANT_FALSE, &sink), S_OK);
        EXPECT_GE(sink.questions, 1);
        return sink.entries;
    }
    static std::vector<std::u16string> Names(const std::vector<TreeEntry>& entries)
    {
        std::vector<std::u16string> names;
        for (const TreeEntry& entry : entries)
            names.push_back(entry.name);
        return names;
    }
    static TreeEntry Find(const ComPtr<ITree>& tree, const std::u16string& name)
    {
        TreeSink sink;
        EXPECT_EQ(tree->Find(Wide(name), &sink), S_OK);
        return sink.entries.empty() ? TreeEntry() : sink.entries[0];
    }
    static std::string Content(const ComPtr<ITree>& tree, const std::u16string& name)
    {
        ComPtr<IFileStream> stream;
        EXPECT_EQ(tree->Open(Wide(name), nullptr, stream.Out()), S_OK);
        if (!stream)
            return "failed";
        char buffer[64] = {};
        ULONG size = 0;
        EXPECT_EQ(stream.As<::ISequentialStream>()->Read(buffer, sizeof buffer, &size), S_OK);
        return {buffer, size};
    }
    // A folder in the first two snapshots.
    void PutTree()
    {
        Put(first, u"tree/a.txt", "1");
        for (const auto& [name, bytes] : {std::pair{u"tree/a.txt", "changed"},
                                          {u"tree/sub/b.txt", "b"},
                                          {u"tree/sub/deep/c.txt", "c"},
                                          {u"tree/z.txt", "z"}})
            Put(second, name, bytes);
    }

    const std::u16string first = u"@GMT-2024.05.01-10.30.00";
    const std::u16string second = u"@GMT-2024.05.02-10.30.00";
    const std::u16string third = u"@GMT-2024.05.03-10.30.00";
    static constexpr std::uint64_t day = 864'000'000'000; // in FILETIME units
    static constexpr std::uint64_t firstTime = 133590330000000000;
    static constexpr std::uint64_t writeTime = firstTime - day;

    SnapshotShare share;
    SnapshotServer server;
    ComPtr<IFileSystem> system;
};

TEST_F(LocalHistories, TellTheSnapshotsThatHaveTheItemNewestFirst)
{
    Put(first, u"file.txt", "one");
    Put(third, u"file.txt", "three");
    SetTime(first, u"file.txt", writeTime);
    SetTime(third, u"file.txt", writeTime + day);
    HistorySink sink;
    ASSERT_EQ(Read(u"C:\\file.txt", sink), S_OK);
    ASSERT_EQ(sink.entries.size(), 2U);
    EXPECT_EQ(sink.entries[0].id, third);
    EXPECT_EQ(sink.entries[0].author, u"");
    EXPECT_EQ(sink.entries[0].description, u"");
    EXPECT_EQ(sink.entries[0].address, Address(third, u"file.txt"));
    EXPECT_EQ(sink.entries[0].path, u"file.txt");
    EXPECT_EQ(sink.entries[0].modified, writeTime + day);
    EXPECT_EQ(sink.entries[0].time, firstTime + 2 * day);
    EXPECT_EQ(sink.entries[1].id, first);
    EXPECT_FALSE(TakeError());
}

TEST_F(LocalHistories, NamesAreThoseOnTheVolume)
{
    share.MakeFolder(first + u"\\dir\\sub");
    HistorySink sink;
    ASSERT_EQ(Read(u"\\\\?\\C:\\dir\\sub", sink), S_OK);
    ASSERT_EQ(sink.entries.size(), 1U);
    EXPECT_EQ(sink.entries[0].path, u"dir/sub");
}

TEST_F(LocalHistories, ComeInPagesBetweenTimesAndFromARevisionOn)
{
    for (const std::u16string& token : {first, second, third})
        Put(token, u"a", "x");
    const std::u16string path = u"C:\\a";
    EXPECT_THAT(Ids(path), ElementsAre(third, second, first));
    EXPECT_THAT(Ids(path, Wanted(0, 1, 1)), ElementsAre(second));
    EXPECT_THAT(Ids(path, Wanted(0, 5)), IsEmpty());
    HistoryOptions options = Wanted();
    options.since = firstTime + day;
    EXPECT_THAT(Ids(path, options), ElementsAre(third, second));
    options.since += 9'999'999;
    EXPECT_THAT(Ids(path, options), ElementsAre(third, second)) << "whole seconds count";
    options.until = firstTime + day;
    EXPECT_THAT(Ids(path, options), ElementsAre(second));
    EXPECT_THAT(Ids(path, Wanted(), second.c_str()), ElementsAre(second, first));
    EXPECT_THAT(Ids(Address(second, u"a")), ElementsAre(second, first));
    EXPECT_THAT(Ids(Address(second, u"a"), Wanted(), first.c_str()), ElementsAre(first));
}

TEST_F(LocalHistories, BeginWithTheLiveItemIfWanted)
{
    const std::u16string path = u"C:\\live file of a test.txt";
    Put(first, u"live file of a test.txt", "before");
    EXPECT_THAT(Ids(path, Wanted(HistoryWorkingCopy)), ElementsAre(first));
    WriteBytes(path, "now");
    HistorySink sink;
    EXPECT_EQ(Read(path, sink, Wanted(HistoryWorkingCopy)), S_OK);
    ASSERT_EQ(sink.entries.size(), 2U);
    EXPECT_EQ(sink.entries[0].description, u"Working Copy");
    EXPECT_EQ(sink.entries[0].address, path);
    EXPECT_EQ(sink.entries[0].id, u"");
    EXPECT_THAT(Ids(path, Wanted(HistoryWorkingCopy, 1)), IsEmpty());
    std::filesystem::remove(std::filesystem::path(path));
}

TEST_F(LocalHistories, SayWhyThereIsNone)
{
    Put(first, u"a", "x");
    ExpectBothFail(u"C:\\none", HistoryNoPath, u"Can't find \"C:\\none\" in the history");
    ExpectBothFail(u"C:\\a", HistoryNoRevision, u"Can't find the revision \"x\".", u"x");
    ExpectBothFail(u"relative", HistoryNoRepository, u"There are no snapshots that hold ");
    ExpectBothFail(u"", HistoryNoRepository, u"There are no snapshots that hold ");
    server.Hold({});
    ExpectBothFail(u"C:\\a", HistoryNoRepository, u"There are no snapshots that hold \"C:\\a\".");
    server.start.status = 1;
    ExpectBothFail(u"C:\\a", HistoryNoRepository, u"There are no snapshots that hold ");
}

TEST_F(LocalHistories, AVolumeThatIsntSharedHasNoSnapshots)
{
    ExpectBothFail(u"Q:\\a", HistoryNoRepository, u"There are no snapshots that hold ");
}

// What the server calls a snapshot is one part of a path.
TEST_F(LocalHistories, NamesOfSnapshotsDontLeadElsewhere)
{
    Put(first, u"a", "x");
    server.Hold({u"..", u"@GMT-2024.05.01-10.30.00\\..\\x", u"@GMT-x/..", u"x", first});
    EXPECT_THAT(Ids(u"C:\\a"), ElementsAre(first));
}

TEST_F(LocalHistories, AreCancelled)
{
    Put(first, u"a", "x");
    HistorySink sink;
    sink.wantsMore = [] {
        return false;
    };
    EXPECT_EQ(Read(u"C:\\a", sink), E_ABORT);
    EXPECT_EQ(sink.questions, 1);
    EXPECT_THAT(sink.entries, IsEmpty());
    ComPtr<ITree> tree;
    EXPECT_EQ(Open(u"C:\\a", tree, nullptr, &sink), E_ABORT);
    const auto there = Tree(u"C:\\a");
    TreeSink items;
    items.wantsMore = sink.wantsMore;
    EXPECT_EQ(there->Find(nullptr, &items), E_ABORT);
    EXPECT_EQ(there->List(nullptr, VARIANT_TRUE, &items), E_ABORT);
    ComPtr<IFileStream> stream;
    EXPECT_EQ(there->Open(nullptr, &items, stream.Out()), E_ABORT);
}

TEST_F(LocalHistories, EndWhereTheHostHasEnoughAndFailAsItDoes)
{
    Put(first, u"a", "x");
    Put(second, u"a", "x");
    for (const HRESULT answer : {S_FALSE, E_FAIL})
    {
        HistorySink sink;
        sink.answer = [&] {
            return answer;
        };
        EXPECT_EQ(Read(u"C:\\a", sink), answer == S_FALSE ? S_OK : E_FAIL);
        EXPECT_EQ(sink.entries.size(), 1U);
    }
}

TEST_F(LocalHistories, ATreeShowsWhatTheSnapshotHas)
{
    PutTree();
    const auto tree = Tree(u"C:\\tree");
    EXPECT_EQ(IdOf(tree), second) << "the newest that has it";
    std::uint64_t time = 0;
    EXPECT_EQ(tree->GetRevisionTime(&time), S_OK);
    EXPECT_EQ(time, firstTime + day);
    EXPECT_THAT(Names(List(tree)), UnorderedElementsAre(u"a.txt", u"sub", u"z.txt"));
    EXPECT_THAT(Names(List(tree, {}, true)),
                UnorderedElementsAre(u"a.txt", u"sub", u"sub/b.txt", u"sub/deep", u"sub/deep/c.txt",
                                     u"z.txt"));
    EXPECT_THAT(Names(List(tree, u"sub", true)),
                UnorderedElementsAre(u"sub/b.txt", u"sub/deep", u"sub/deep/c.txt"));
    EXPECT_EQ(Content(tree, u"a.txt"), "changed");
    EXPECT_EQ(Content(tree, u"sub/deep/c.txt"), "c");
    const TreeEntry file = Find(tree, u"a.txt");
    EXPECT_EQ(file.name, u"a.txt");
    EXPECT_EQ(file.kind, std::uint32_t{TreeFile});
    EXPECT_EQ(file.size, 7U);
    EXPECT_EQ(file.modified, time);
    EXPECT_EQ(file.contentId, u"");
    EXPECT_EQ(Find(tree, u"sub").kind, std::uint32_t{TreeFolder});
    EXPECT_EQ(Find(tree, u"").kind, std::uint32_t{TreeFolder});
    EXPECT_EQ(Content(Tree(u"C:\\tree", first.c_str()), u"a.txt"), "1");
    EXPECT_EQ(Content(Tree(Address(first, u"tree")), u"a.txt"), "1");
}

TEST_F(LocalHistories, ATreeMayBeAFile)
{
    Put(first, u"a.txt", "one");
    const auto tree = Tree(u"C:\\a.txt");
    EXPECT_EQ(Content(tree, u""), "one");
    EXPECT_EQ(Find(tree, u"").size, 3U);
    TreeSink sink;
    EXPECT_EQ(tree->List(nullptr, VARIANT_FALSE, &sink), HistoryWrongKind);
    ExpectText(u"\"C:\\a.txt\" isn't a folder.");
    EXPECT_EQ(tree->Find(Wide(std::u16string(u"x")), &sink), HistoryNoPath);
}

TEST_F(LocalHistories, NamesInATreeAreExact)
{
    PutTree();
    const auto tree = Tree(u"C:\\tree");
    for (const char16_t* const name :
         {u"none", u"A.TXT", u"*", u"a.tx?", u"../tree/a.txt", u"..", u".", u"./a.txt", u"/a.txt",
          u"sub//b.txt", u"sub/", u"sub\\b.txt", u"a.txt/x", u"a.txt:stream"})
    {
        const std::u16string text = name;
        TreeSink sink;
        EXPECT_EQ(tree->Find(Wide(text), &sink), HistoryNoPath) << testing::PrintToString(text);
        EXPECT_EQ(tree->List(Wide(text), VARIANT_TRUE, &sink), HistoryNoPath);
        ComPtr<IFileStream> stream;
        EXPECT_EQ(tree->Open(Wide(text), nullptr, stream.Out()), HistoryNoPath);
        EXPECT_THAT(sink.entries, IsEmpty());
    }
    TreeSink sink;
    EXPECT_EQ(tree->List(Wide(std::u16string(u"a.txt")), VARIANT_FALSE, &sink), HistoryWrongKind);
    ComPtr<IFileStream> stream;
    EXPECT_EQ(tree->Open(Wide(std::u16string(u"sub")), nullptr, stream.Out()), HistoryWrongKind);
}

TEST(LocalHistoriesAlone, WithoutAFileServerThereAreNoSnapshots)
{
    const TempFolder folder;
    WriteBytes(folder / u"a.txt", "x");
    ComPtr<IFileSystem> system;
    ASSERT_EQ(MakeInstance<CWin32FileSystemObject>(nullptr, IID_IFileSystem, system.OutVoid()),
              S_OK);
    HistorySink sink;
    const std::u16string path = folder / u"a.txt";
    const HRESULT status =
        system.As<IFileSystemHistory>()->ReadHistory(Wide(path), nullptr, nullptr, &sink);
#ifdef _WIN32
    // Whatever this machine's own server says: it isn't silence.
    EXPECT_TRUE(status < 0 || !sink.entries.empty());
#else
    EXPECT_EQ(status, HistoryNoRepository);
#endif
    EXPECT_TRUE(status == S_OK || sink.entries.empty());
}

} // namespace
} // namespace tarnwell::test
