// Mercurial's histories told in full, where they differ from those of others.
#include "module/hghistorytest.h"

#include <tarnwell/text.h>

#include <sstream>

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(HgHistories, HoldWhatIsBehindAnEmptyLine)
{
    repository.Commit(u"a.txt", "1", "first");
    repository.Commit(u"a.txt", "2", "title\n\nbody\n\n\nmore");
    repository.Commit(u"a.txt", "3", "last");
    EXPECT_THAT(Descriptions(Address(u"a.txt")),
                ElementsAre(u"last", u"title\n\nbody\n\n\nmore", u"first"));
}

TEST_F(HgHistories, TellTimesBeforeTheirEpochToo)
{
    repository.Commit(u"a.txt", "1", "early", {"-d", "-100 0"});
    repository.Commit(u"a.txt", "2", "late", {"-d", "1000000000 -7200"});
    const auto entries = History(Address(u"a.txt"));
    ASSERT_EQ(entries.size(), 2U);
    EXPECT_EQ(entries[0].time, 126444736000000000U);
    EXPECT_EQ(entries[0].modified, entries[0].time);
    EXPECT_EQ(entries[1].time, 116444736000000000U - 1'000'000'000U);
    const auto within = [&](std::uint64_t since, std::uint64_t until) {
        HistoryOptions options = Wanted();
        options.since = since;
        options.until = until;
        return Descriptions(Address(u"a.txt"), options);
    };
    EXPECT_THAT(within(entries[0].time, 0), ElementsAre(u"late"));
    EXPECT_THAT(within(entries[1].time, entries[1].time), ElementsAre(u"early"));
    EXPECT_THAT(within(0, entries[0].time - 10'000'000), ElementsAre(u"early"));
    // Beyond the 32 bits that the client knows.
    EXPECT_THAT(within(1, UINT64_MAX), ElementsAre(u"late", u"early"));
    EXPECT_THAT(within(160000000000000000U, 0), IsEmpty());
    EXPECT_THAT(within(0, 1), IsEmpty());
}

TEST_F(HgHistories, FollowNamesOnBothSidesOfAMerge)
{
    repository.Commit(u"old.txt", "1\n2\n3\n4\n", "made");
    repository.Hg("rename old.txt new.txt");
    Record("renamed");
    repository.Hg("update -q 0");
    repository.Commit(u"old.txt", "1\n2\n3\n4\n5\n", "changed aside");
    repository.Hg("update -q 1");
    repository.Hg("merge -q -t internal:merge 2");
    Record("merged");
    repository.Commit(u"new.txt", "0\n1\n2\n3\n4\n5\n", "changed");
    EXPECT_THAT(PathsOf(Address(u"new.txt")),
                ElementsAre(u"changed: new.txt", u"merged: new.txt", u"changed aside: old.txt",
                            u"renamed: new.txt", u"made: old.txt"));
}

// Two files that had the name of one after the other, each changed together with the other one.
TEST_F(HgHistories, FollowOneOfTwoFilesThatAreChangedTogether)
{
    const auto change = [&](const std::string& description) {
        for (const char16_t* const name : {u"a.txt", u"b.txt", u"{rev} 'c'.txt"})
        {
            if (fs::exists(repository / name))
                WriteBytes(repository / name, description);
        }
        Record(description);
    };
    WriteBytes(repository / u"a.txt", "a");
    WriteBytes(repository / u"b.txt", "b");
    Record("made");
    change("both");
    repository.Run({"rename", "b.txt", "{rev} 'c'.txt"});
    change("away");
    repository.Hg("rename a.txt b.txt");
    change("onto its name");
    change("as two");
    EXPECT_THAT(PathsOf(Address(u"b.txt")),
                ElementsAre(u"as two: b.txt", u"onto its name: b.txt", u"away: b.txt",
                            u"both: b.txt", u"made: b.txt"));
    EXPECT_THAT(PathsOf(Address(u"{rev} 'c'.txt")),
                ElementsAre(u"as two: {rev} 'c'.txt", u"onto its name: {rev} 'c'.txt",
                            u"away: {rev} 'c'.txt", u"both: b.txt", u"made: b.txt"));
    repository.Hg("rename b.txt d.txt");
    change("last");
    EXPECT_THAT(PathsOf(Address(u"d.txt")),
                ElementsAre(u"last: d.txt", u"as two: b.txt", u"onto its name: b.txt",
                            u"away: a.txt", u"both: a.txt", u"made: a.txt"));
}

// The client keeps a version once that several revisions have made, some of which may be gone.
TEST_F(HgHistories, FollowWhatWasRecordedAgain)
{
    const auto amend = [&](const std::string& description) {
        repository.Run({"--config", "experimental.evolution=createmarkers", "commit", "-q",
                        "--amend", "-m", description});
    };
    WriteBytes(repository / u"b.txt", "b");
    repository.Commit(u"a.txt", "a", "made");
    WriteBytes(repository / u"b.txt", "b2");
    repository.Commit(u"a.txt", "a2", "changed");
    amend("changed again");
    repository.Hg("rename a.txt c.txt");
    WriteBytes(repository / u"b.txt", "b3");
    Record("renamed");
    amend("renamed again");
    repository.Hg("rename b.txt d.txt");
    repository.Commit(u"c.txt", "a3", "last");
    EXPECT_THAT(PathsOf(Address(u"c.txt")), ElementsAre(u"last: c.txt", u"renamed again: c.txt",
                                                        u"changed again: a.txt", u"made: a.txt"));
    EXPECT_THAT(PathsOf(Address(u"d.txt")), ElementsAre(u"last: d.txt", u"renamed again: b.txt",
                                                        u"changed again: b.txt", u"made: b.txt"));
}

TEST_F(HgHistories, FollowAFileThatIsGone)
{
    repository.Commit(u"old.txt", "1", "made");
    repository.Hg("rename old.txt new.txt");
    Record("renamed");
    repository.Hg("remove new.txt");
    Record("removed");
    repository.Commit(u"other.txt", "1", "of another");
    EXPECT_THAT(PathsOf(Address(u"new.txt")),
                ElementsAre(u"removed: new.txt", u"renamed: new.txt", u"made: old.txt"));
    EXPECT_THAT(PathsOf(Address(u"old.txt")), ElementsAre(u"renamed: old.txt", u"made: old.txt"));
}

TEST_F(HgHistories, CopiesAreFollowed)
{
    repository.Commit(u"a.txt", "1", "made");
    repository.Hg("copy a.txt b.txt");
    Record("copied");
    repository.Commit(u"a.txt", "2", "changed");
    EXPECT_THAT(PathsOf(Address(u"b.txt")), ElementsAre(u"copied: b.txt", u"made: a.txt"));
    EXPECT_THAT(Descriptions(Address(u"b.txt")), ElementsAre(u"copied"));
}

TEST_F(HgHistories, BeginAtBranchesAndAtWhatIsCheckedOut)
{
    repository.Commit(u"a.txt", "1", "first");
    repository.Hg("branch -q side");
    repository.Commit(u"a.txt", "2", "second");
    repository.Hg("update -q 0");
    EXPECT_THAT(Descriptions(Address(u"a.txt")), ElementsAre(u"first"));
    EXPECT_THAT(Descriptions(Address(u"a.txt", "side")), ElementsAre(u"second", u"first"));
    EXPECT_THAT(Descriptions(Address(u"a.txt", "tip")), ElementsAre(u"second", u"first"));
}

TEST_F(HgHistories, OfARepositoryWithoutRevisions)
{
    EXPECT_EQ(ReadStatus(Address(u"a.txt")), HistoryNoRevision);
    EXPECT_EQ(ReadStatus(Address(u"")), HistoryNoRevision);
    ComPtr<ITree> tree;
    EXPECT_EQ(OpenTree(Address(u""), tree).status, HistoryNoRevision);
}

TEST_F(HgHistories, AnIdThatBeginsSeveralIsNone)
{
    // Sixteen beginnings of one digit are not enough for seventeen.
    for (int i = 0; i < 17; ++i)
        repository.Commit(u"a.txt", std::to_string(i), "one of many");
    std::istringstream ids(repository.Hg("log -T {node|shortest}\\n"));
    std::map<char, int> firsts;
    std::string several;
    for (std::string id; ids >> id;)
    {
        if (++firsts[id[0]] == 2 && (id[0] < '0' || id[0] > '9'))
            several = id[0];
    }
    if (several.empty())
        GTEST_SKIP() << "no two ids begin with the same letter";
    EXPECT_EQ(ReadStatus(Address(u"a.txt", several)), HistoryNoRevision);
}

// A repository's tags can have any name, also what the client is asked in its language.
TEST_F(HgHistories, QuestionsAreNoNames)
{
    repository.Commit(u"a.txt", "1", "first");
    const std::string first = repository.Hg("log -r . -T {node}");
    repository.Commit(u"a.txt", "2", "second");
    const std::string second = "\"" + repository.Hg("log -r . -T {node}") + "\"";
    std::string tags;
    for (const std::string& question :
         {std::string("\"\\x2e\""), second, "reverse(ancestors(" + second + "))"})
        tags += first + " " + question + "\n" + first + " revset(" + question + ")\n";
    WriteBytes(repository / u".hg/localtags", tags);
    EXPECT_THAT(Descriptions(Address(u"")), ElementsAre(u"second", u"first"));
    const auto tree = TreeAt();
    EXPECT_EQ(ListOf(tree, {}, true).size(), 1U);
    EXPECT_EQ(ContentOf(tree, u"a.txt"), "2");
}

// A name with a "#" in it must not be taken for a repository and a branch.
TEST_F(HgHistories, OfRepositoriesInFoldersOfAnyName)
{
    repository.Commit(u"a.txt", "1", "first");
    const TempFolder other;
    for (const std::u16string_view name : {u"a#b", u"-R", u"caf\u00e9 $HOME"})
    {
        const fs::path folder(other / name);
        fs::copy(repository.Folder().Path(), folder, fs::copy_options::recursive);
        EXPECT_TRUE(fs::exists(folder / ".hg")) << folder;
        EXPECT_THAT(Descriptions((folder / "a.txt").u16string()), ElementsAre(u"first"));
    }
}

TEST_F(HgHistories, OfASharedRepository)
{
    repository.Commit(u"a.txt", "1", "first");
    const TempFolder other;
    const std::u16string shared = other / u"shared";
    repository.Run(
        {"--config", "extensions.share=", "share", "-q", ".", EncodeName(shared).value()});
    EXPECT_THAT(Descriptions((fs::path(shared) / "a.txt").u16string()), ElementsAre(u"first"));
}

TEST_F(HgHistories, TheInnermostRepositoryCounts)
{
    repository.Commit(u"a.txt", "1", "of the outer one");
    const MercurialRepository inner;
    inner.Commit(u"a.txt", "1", "of the inner one");
    fs::copy(inner.Folder().Path(), repository / u"inner", fs::copy_options::recursive);
    EXPECT_THAT(Descriptions(repository / u"inner/a.txt"), ElementsAre(u"of the inner one"));
}

// A repository can say by itself that it wants extensions, without any settings.
TEST_F(HgHistories, RequiredExtensionsAreNotLoaded)
{
    repository.Commit(u"a.txt", "content", "first");
    const std::string before = ReadBytes(repository / u".hg/requires");
    for (const char* const feature : {"git", "largefiles", "unheard-of"})
    {
        WriteBytes(repository / u".hg/requires", before + feature + "\n");
        EXPECT_EQ(ReadStatus(Address(u"a.txt")), HistoryBadSettings) << feature;
    }
    for (const char* const feature : {"lfs", "narrowhg-experimental"})
    {
        WriteBytes(repository / u".hg/requires", before + feature + "\n");
        EXPECT_EQ(ReadStatus(Address(u"a.txt")), HistoryIncomplete) << feature;
    }
}

// Whenever the host has had enough, the client is gone and the next history is whole.
TEST_F(HgHistories, EndAtAnyMoment)
{
    constexpr std::size_t count = 300;
    repository.Run({"debugbuilddag", "-o", "+" + std::to_string(count)});
    repository.Hg("update -q tip");
    for (std::size_t last = 1; last < count; last += 37)
    {
        HistorySink sink;
        const bool fails = last % 2 == 0;
        sink.answer = [&] {
            const HRESULT end = fails ? E_FAIL : S_FALSE;
            return sink.entries.size() == last ? end : S_OK;
        };
        const Outcome outcome = Read(Address(u"of"), sink, Wanted(last % 3 == 0 ? 1 : 0));
        EXPECT_EQ(outcome.status, fails ? E_FAIL : S_OK);
        EXPECT_EQ(sink.entries.size(), last);
    }
    EXPECT_EQ(History(Address(u"of")).size(), count);
}

} // namespace
} // namespace tarnwell::test
