// Mercurial's histories told in full, where they differ from those of others.
#include "module/hghistorytest.h"
#include "support/environmentvalue.h"

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
    EXPECT_THAT(ToldOf(Address(u"a.txt")),
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
        return ToldOf(Address(u"a.txt"), options);
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
    EXPECT_THAT(ToldOf(Address(u"b.txt")), ElementsAre(u"copied"));
}

TEST_F(HgHistories, BeginAtBranchesAndAtWhatIsCheckedOut)
{
    repository.Commit(u"a.txt", "1", "first");
    repository.Hg("branch -q side");
    repository.Commit(u"a.txt", "2", "second");
    repository.Hg("update -q 0");
    EXPECT_THAT(ToldOf(Address(u"a.txt")), ElementsAre(u"first"));
    EXPECT_THAT(ToldOf(Address(u"a.txt", "side")), ElementsAre(u"second", u"first"));
    EXPECT_THAT(ToldOf(Address(u"a.txt", "tip")), ElementsAre(u"second", u"first"));
}

TEST_F(HgHistories, OfARepositoryWithoutRevisions)
{
    EXPECT_EQ(Status(Address(u"a.txt")), HistoryNoRevision);
    EXPECT_EQ(Status(Address(u"")), HistoryNoRevision);
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
    EXPECT_EQ(Status(Address(u"a.txt", several)), HistoryNoRevision);
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
        EXPECT_THAT(ToldOf((folder / "a.txt").u16string()), ElementsAre(u"first"));
    }
}

TEST_F(HgHistories, OfASharedRepository)
{
    repository.Commit(u"a.txt", "1", "first");
    const TempFolder other;
    const std::u16string shared = other / u"shared";
    repository.Run(
        {"--config", "extensions.share=", "share", "-q", ".", EncodeName(shared).value()});
    EXPECT_THAT(ToldOf((fs::path(shared) / "a.txt").u16string()), ElementsAre(u"first"));
}

TEST_F(HgHistories, TheInnermostRepositoryCounts)
{
    repository.Commit(u"a.txt", "1", "of the outer one");
    const MercurialRepository inner;
    inner.Commit(u"a.txt", "1", "of the inner one");
    fs::copy(inner.Folder().Path(), repository / u"inner", fs::copy_options::recursive);
    EXPECT_THAT(ToldOf(repository / u"inner/a.txt"), ElementsAre(u"of the inner one"));
}

// Each of these would change what is told, or run the program.
class HgSettings : public HgHistories
{
protected:
    // A line that leaves a file behind where it is run.
    std::string Trace() const
    {
        return "touch \"" + EncodeName(traces_ / u"was-run").value() + "\"";
    }
    std::string Settings() const
    {
        WriteBytes(traces_ / u"evil.py",
                   "open(r'" + EncodeName(traces_ / u"was-loaded").value() + "', 'w').close()\n");
        const std::string trace = Trace();
        std::string text =
            "[extensions]\nevil = " + EncodeName(traces_ / u"evil.py").value() + "\n";
        text += "[hooks]\n";
        for (const char* const hook :
             {"pre-log", "post-log", "fail-log", "pre-cat", "pre-files", "pre-manifest",
              "pre-serve", "pre-version", "pretxnopen", "precommand"})
            text += std::string(hook) + " = " + trace + "\n";
        text += "[alias]\n";
        for (const char* const command : {"log", "cat", "files", "manifest", "serve", "version"})
            text += std::string(command) + " = !" + trace + "\n";
        text += "[defaults]\nlog = --graph\nfiles = -X a.txt\n";
        text +=
            "[decode]\n** = pipe: " + trace + "; cat\n[encode]\n** = pipe: " + trace + "; cat\n";
        text += "[pager]\npager = " + trace + "; cat\n";
        text += "[ui]\neditor = " + trace + "\nverbose = true\ndebug = true\nstyle = xml\n";
        text += "message-output = channel\ncolor = always\nssh = " + trace + "\ntraceback = yes\n";
        text += "[color]\nmode = ansi\n[revsetalias]\ntip = none()\nfile(x) = none()\n";
        text += "[templatealias]\nnode = \"x\"\ncount(x) = \"y\"\n[templates]\ndesc = \"z\"\n";
        text += "[fsmonitor]\nmode = on\n[cmdserver]\nlog = -\n[format]\n";
        text += "[diff]\ngit = yes\n[command-templates]\nlog = nothing\n";
        text += "[paths]\n" + EncodeName(repository.Folder().Path().u16string()).value() +
                " = /elsewhere\n";
        return text;
    }
    void ExpectNoTraces() const
    {
        for (const auto& file : fs::recursive_directory_iterator(traces_.Path()))
            EXPECT_EQ(file.path().filename(), "evil.py");
    }
    const TempFolder traces_;
};

TEST_F(HgSettings, OfTheRepositoryAndTheUserChangeNothing)
{
    repository.Commit(u"a.txt", "content", "first");
    repository.Hg("rename a.txt b.txt");
    Record("second");
    const std::u16string address = Address(u"b.txt");
    const auto expected = History(address, Wanted(HistoryFollow));
    ASSERT_EQ(expected.size(), 2U);
    const std::string settings = Settings();
    for (const char16_t* const name : {u".hg/hgrc", u".hg/hgrc-not-shared"})
        WriteBytes(repository / name, settings);
    WriteBytes(traces_ / u"evil.py", ReadBytes(traces_ / u"evil.py"));
    const TempFolder users;
    WriteBytes(users / u".hgrc", settings);
    const std::string user = EncodeName(users / u".hgrc").value();
    const EnvironmentValue path("HGRCPATH", user.c_str());
    const EnvironmentValue plain("HGPLAINEXCEPT", "alias,i18n,revsetalias,templatealias");
    const EnvironmentValue encoding("HGENCODING", "latin-1");
    EXPECT_EQ(History(address, Wanted(HistoryFollow)), expected);
    const auto tree = TreeAt();
    EXPECT_EQ(ContentIn(tree, u"b.txt"), "content");
    EXPECT_EQ(All(tree).size(), 1U);
    ExpectNoTraces();
}

// The test above would see it if the settings were read.
TEST_F(HgSettings, WouldLeaveTraces)
{
    repository.Commit(u"a.txt", "content", "first");
    WriteBytes(repository / u".hg/hgrc", Settings());
    try
    {
        repository.Hg("log");
    }
    catch (const std::exception&)
    {
        // Whatever became of it.
    }
    EXPECT_TRUE(fs::exists(traces_ / u"was-loaded"));
}

TEST_F(HgSettings, OfASharesSourceChangeNothing)
{
    repository.Commit(u"a.txt", "content", "first");
    const TempFolder other;
    const std::u16string shared = other / u"shared";
    repository.Run(
        {"--config", "extensions.share=", "share", "-q", ".", EncodeName(shared).value()});
    WriteBytes(repository / u".hg/hgrc", Settings());
    EXPECT_THAT(ToldOf((fs::path(shared) / "a.txt").u16string()), ElementsAre(u"first"));
    ExpectNoTraces();
}

// A repository can say by itself that it wants extensions, without any settings.
TEST_F(HgSettings, RequiredExtensionsAreNotLoaded)
{
    repository.Commit(u"a.txt", "content", "first");
    const std::string before = ReadBytes(repository / u".hg/requires");
    for (const char* const feature : {"git", "largefiles", "unheard-of"})
    {
        WriteBytes(repository / u".hg/requires", before + feature + "\n");
        EXPECT_EQ(Status(Address(u"a.txt")), HistoryBadSettings) << feature;
    }
    for (const char* const feature : {"lfs", "narrowhg-experimental"})
    {
        WriteBytes(repository / u".hg/requires", before + feature + "\n");
        EXPECT_EQ(Status(Address(u"a.txt")), HistoryIncomplete) << feature;
    }
}

#ifndef _WIN32
TEST_F(HgHistories, OfARepositoryThatMustNotBeReadSayWhy)
{
    repository.Commit(u"a.txt", "1", "first");
    WriteBytes(repository / u".hg/store/00changelog.i", "no changelog at all");
    HistorySink sink;
    const Outcome outcome = Read(Address(u"a.txt"), sink);
    EXPECT_EQ(outcome.status, HistoryClientFailed);
    ASSERT_TRUE(outcome.error);
    EXPECT_NE(outcome.error->text.find(u"exit code 255"), std::u16string::npos);
}
#endif

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
