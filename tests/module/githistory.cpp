// Git's histories told in full, on repositories of all kinds.
#include "module/githistorytest.h"
#include "support/clients.h"
#include "support/environmentvalue.h"
#include "support/wine.h"

#include <tarnwell/text.h>

#include <algorithm>
#include <random>

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(GitHistories, OfFoldersAndOfAllOfARepository)
{
    repository.Commit(u"sub/a.txt", "1", "first");
    repository.Commit(u"b.txt", "1", "second");
    repository.Commit(u"sub/deep/c.txt", "1", "third");
    for (const std::uint32_t flags : {0U, std::uint32_t{HistoryFollow}})
    {
        EXPECT_THAT(Descriptions(Address(u"sub"), Wanted(flags)), ElementsAre(u"third", u"first"));
        EXPECT_THAT(Descriptions(Address(u"sub/"), Wanted(flags)), ElementsAre(u"third", u"first"));
        EXPECT_THAT(Descriptions(u"git://" + repository.Folder().Path().u16string(), Wanted(flags)),
                    ElementsAre(u"third", u"second", u"first"));
    }
    EXPECT_EQ(History(u"git://" + repository.Folder().Path().u16string())[0].path, u"");
}

TEST_F(GitHistories, OfWhatIsGoneAndWhatWasMadeAgain)
{
    repository.Commit(u"sub/a.txt", "1", "made");
    repository.Git("rm -q sub/a.txt");
    repository.Git("commit -q -m removed");
    EXPECT_THAT(Descriptions(Address(u"sub/a.txt")), ElementsAre(u"removed", u"made"));
    repository.Commit(u"sub/a.txt", "2", "again");
    EXPECT_THAT(Descriptions(Address(u"sub/a.txt")), ElementsAre(u"again", u"removed", u"made"));
    EXPECT_THAT(Descriptions(Address(u"sub/a.txt", "HEAD~1")), ElementsAre(u"removed", u"made"));
}

// Where a file is followed, merges aren't among its revisions.
TEST_F(GitHistories, OfWhatOnlyAMergeChangedAreEmptyWhereItIsFollowed)
{
    const std::string commits = "commit refs/heads/side\ncommitter A <a@b> 1000000001 +0000\n"
                                "data 1\n1\nfrom refs/heads/main^0\n"
                                "M 644 inline side\ndata 1\n1\n"
                                "commit refs/heads/main\ncommitter A <a@b> 1000000002 +0000\n"
                                "data 1\n2\nfrom refs/heads/main^0\n"
                                "M 644 inline main\ndata 1\n2\n"
                                "commit refs/heads/main\ncommitter A <a@b> 1000000003 +0000\n"
                                "data 1\n3\nmerge refs/heads/side\n"
                                "M 644 inline merge\ndata 1\n3\n";
    repository.Commit(u"a.txt", "1", "first");
    ASSERT_EQ(RunClient("git", {.arguments = {u"fast-import", u"--quiet"},
                                .input = commits,
                                .folder = repository.Folder().Path()})
                  .exitCode,
              0);
    EXPECT_THAT(Descriptions(Address(u"merge")), ElementsAre(u"3"));
    EXPECT_THAT(Descriptions(Address(u"merge"), Wanted(HistoryFollow)), IsEmpty());
    EXPECT_THAT(Descriptions(Address(u"main"), Wanted(HistoryFollow)), ElementsAre(u"2"));
}

TEST_F(GitHistories, PathsAreNoPatternsAndNoOptions)
{
    repository.Commit(u"a1.txt", "1", "matched");
    repository.Commit(u"-n", "1", "an option");
#ifndef _WIN32
    repository.Commit(u"*.txt", "1", "a pattern");
    repository.Commit(u":(glob)**", "1", "magic");
    EXPECT_THAT(Descriptions(Address(u"*.txt")), ElementsAre(u"a pattern"));
    EXPECT_THAT(Descriptions(Address(u":(glob)**")), ElementsAre(u"magic"));
#endif
    repository.Commit(u"a[1].txt", "2", "meant");
    EXPECT_THAT(Descriptions(Address(u"a[1].txt")), ElementsAre(u"meant"));
    EXPECT_THAT(Descriptions(Address(u"-n")), ElementsAre(u"an option"));
}

TEST_F(GitHistories, RevisionsAreAnyNameOfACommit)
{
    const std::string first = repository.Commit(u"a.txt", "1", "first");
    repository.Git("tag v1.0");
    repository.Git("tag -a -m annotated v1.0-a");
    repository.Git("branch old");
    repository.Commit(u"a.txt", "2", "second");
    for (const std::string& name :
         {first, first.substr(0, 8), std::string("v1.0"), std::string("v1.0-a"), std::string("old"),
          std::string("HEAD~1"), std::string("refs/tags/v1.0"), std::string("main@{1}"),
          std::string(":/^fi"), std::string("HEAD^{/fi}")})
    {
        EXPECT_THAT(Descriptions(Address(u"a.txt", name)), ElementsAre(u"first")) << name;
        EXPECT_EQ(ContentOf(Tree(Address(u"a.txt", name))), "1") << name;
    }
    for (const char* const name : {":/", ":/none", ":/^fi^{commit}", ":/--all"})
        EXPECT_EQ(ReadStatus(Address(u"a.txt", name)), HistoryNoRevision) << name;
    EXPECT_EQ(ReadStatus(Address(u"a.txt", "HEAD:a.txt")), HistoryNoRevision);
    EXPECT_EQ(ReadStatus(Address(u"a.txt", first.substr(0, 8) + "..main")), HistoryNoRevision);
}

TEST_F(GitHistories, DescriptionsOfAllEncodings)
{
    repository.Commit(u"a.txt", "1", "first");
    const std::string people = "author J\xF6rg <a@b> 1000000000 +0200\n"
                               "committer C <a@b> 1000000001 +0000";
    WriteBytes(repository / u"a.txt", "2");
    repository.Git("add -A");
    CommitRaw(people + "\nencoding ISO-8859-1", "gr\xFC\xDF\x65\n\n\n\n  body\n\n");
    WriteBytes(repository / u"a.txt", "3");
    repository.Git("add -A");
    CommitRaw("author  <a@b> 1000000000 +0000\ncommitter C <a@b> 1000000000 +0000",
              "\n\nnameless\n");
    repository.Git("config i18n.logOutputEncoding UTF-16");
    const auto entries = History(Address(u"a.txt"));
    ASSERT_EQ(entries.size(), 3U);
    EXPECT_EQ(entries[0].author, u"");
    EXPECT_EQ(entries[0].description, u"\n\nnameless");
    EXPECT_EQ(entries[1].author, u"J\u00f6rg");
    EXPECT_EQ(entries[1].description, u"gr\u00fc\u00dfe\n\n\n\n  body");
    EXPECT_EQ(entries[1].modified, 126444736000000000U);
    EXPECT_EQ(entries[1].time, 126444736010000000U);
}

// Each with the name that the client is told, or is given in the commit itself.
TEST_F(GitHistories, DescriptionsOfEncodingsThatTheClientIsSetTo)
{
    struct Encoded
    {
        const char* encoding;
        const char* bytes;
        const char16_t* text;
    };
    const Encoded all[] = {
        {"ISO-8859-1", "gr\xFC\xDF\x65", u"gr\u00fc\u00dfe"},
        {"Shift_JIS", "\x93\xFA\x96\x7B\n\n\x83\x5C", u"\u65e5\u672c\n\n\u30bd"},
        {"EUC-JP", "\xC6\xFC\xCB\xDC", u"\u65e5\u672c"},
        {"windows-1252", "\x80 5", u"\u20ac 5"},
        {"UTF-8", "\xE6\x97\xA5\n\n\xF0\x9F\x98\x80", u"\u65e5\n\n\U0001F600"},
    };
    std::vector<std::u16string> expected;
    for (const Encoded& each : all)
    {
        WriteBytes(repository / u"a.txt", each.encoding);
        WriteBytes(repository / u".git/message", each.bytes);
        repository.Git("add a.txt");
        repository.Run({"-c", std::string("i18n.commitEncoding=") + each.encoding, "commit", "-q",
                        "-F", ".git/message"});
        expected.insert(expected.begin(), each.text);
    }
    EXPECT_EQ(Descriptions(Address(u"a.txt")), expected);
}

// What is no text in any encoding is told as well as it can be, and nothing is left out.
TEST_F(GitHistories, DescriptionsOfUnknownEncodings)
{
    repository.Commit(u"a.txt", "1", "first");
    WriteBytes(repository / u"a.txt", "2");
    repository.Git("add -A");
    CommitRaw("author A <a@b> 1000000000 +0000\ncommitter C <a@b> 1000000000 +0000\n"
              "encoding nosuch",
              "x\xFFy\n");
    const auto found = Descriptions(Address(u"a.txt"));
    ASSERT_EQ(found.size(), 2U);
    EXPECT_TRUE(found[0].starts_with(u"x") && found[0].ends_with(u"y"));
}

TEST_F(GitHistories, OfASparseCheckoutAreWhole)
{
    repository.Commit(u"in/a.txt", "1", "first");
    repository.Commit(u"out/b.txt", "1", "second");
    repository.Git("sparse-checkout set in");
    ASSERT_FALSE(fs::exists(fs::path(repository / u"out/b.txt")));
    EXPECT_THAT(Descriptions(Address(u"out/b.txt")), ElementsAre(u"second"));
    EXPECT_THAT(Descriptions(repository / u"out"), ElementsAre(u"second"));
}

TEST_F(GitHistories, OfLinkedWorkingTreesSubmodulesAndBareRepositories)
{
    repository.Commit(u"sub/a.txt", "1", "first");
    const TempFolder other;
    const std::u16string linked = other / u"linked";
    repository.Run({"worktree", "add", "-q", EncodeName(linked).value()});
    EXPECT_THAT(Descriptions(u"git://" + Joined(linked, u"sub/a.txt")), ElementsAre(u"first"));

    const std::u16string bare = other / u"bare";
    repository.Run({"clone", "-q", "--bare", ".", EncodeName(bare).value()});
    EXPECT_THAT(Descriptions(u"git://" + Joined(bare, u"sub/a.txt")), ElementsAre(u"first"));
    EXPECT_THAT(Descriptions(Joined(bare, u"sub")), ElementsAre(u"first"));

    const Repository around;
    around.Commit(u"x.txt", "1", "of the outer one");
    around.Run({"-c", "protocol.file.allow=always", "submodule", "add", "-q",
                EncodeName(bare).value(), "module"});
    around.Git("commit -q -m added");
    EXPECT_THAT(Descriptions(around / u"module/sub/a.txt"), ElementsAre(u"first"));
    EXPECT_THAT(Descriptions(around / u"module"), ElementsAre(u"first"));
    EXPECT_THAT(Descriptions(around / u".gitmodules"), ElementsAre(u"added"));
}

TEST_F(GitHistories, OfRepositoriesWithLongIds)
{
    const TempFolder folder;
    RunClient("git", Words("init -q -b main --object-format=sha256"), folder.Path());
    WriteBytes(folder / u"a.txt", "1");
    RunClient("git", Words("add -A"), folder.Path());
    RunClient("git", Words("-c user.name=A -c user.email=a@b commit -q -m first"), folder.Path());
    const auto entries = History(folder / u"a.txt");
    ASSERT_EQ(entries.size(), 1U);
    EXPECT_EQ(entries[0].id.size(), 64U);
}

TEST_F(GitHistories, OfAShallowCloneEndWhereItEnds)
{
    repository.Commit(u"a.txt", "1", "first");
    repository.Commit(u"a.txt", "2", "second");
    const TempFolder other;
    const std::u16string clone = other / u"clone";
    repository.Run({"clone", "-q", "--depth=1", "--no-local", ".", EncodeName(clone).value()});
    EXPECT_THAT(Descriptions(Joined(clone, u"a.txt")), ElementsAre(u"second"));
    EXPECT_EQ(ReadStatus(u"git://" + Joined(clone, u"a.txt") + u"#HEAD~1"), HistoryNoRevision);
}

TEST_F(GitHistories, OfAPartialCloneFetchNothingAndSayWhy)
{
    repository.Commit(u"sub/a.txt", "1", "first");
    repository.Commit(u"sub/a.txt", "2", "second");
    repository.Git("config uploadpack.allowFilter true");
    const TempFolder other;
    const std::u16string clone = other / u"clone";
    repository.Run(
        {"clone", "-q", "--filter=tree:0", "--bare", "--no-local", ".", EncodeName(clone).value()});
    HistorySink sink;
    const Outcome outcome = Read(Joined(clone, u"sub/a.txt"), sink);
    EXPECT_EQ(outcome.status, HistoryIncomplete);
    EXPECT_THAT(sink.entries, IsEmpty());
    EXPECT_THAT(Descriptions(clone), ElementsAre(u"second", u"first"));
}

// Without a server to ask, or with a client that doesn't even try, as those from 2.44 on.
TEST_F(GitHistories, OfWhatIsMissingSayWhy)
{
    repository.Commit(u"sub/a.txt", "one\ntwo\nthree\n", "first");
    repository.Run({"mv", "sub/a.txt", "sub/b.txt"});
    repository.Commit(u"sub/b.txt", "one\ntwo\nthree\nfour\n", "second");
    const std::u16string address = Address(u"sub/b.txt");
    const auto tree = TreeAt("HEAD");

    repository.RemoveObject("HEAD:sub/b.txt");
    EXPECT_EQ(ReadStatus(address, {}, Wanted(HistoryFollow)), HistoryIncomplete);
    EXPECT_THAT(Descriptions(address), testing::SizeIs(1)) << "for which it isn't needed";
    EXPECT_EQ(OpenFailure(tree, u"sub/b.txt").status, HistoryIncomplete);
    repository.RemoveObject("HEAD:sub");
    for (const std::uint32_t flags : {0U, std::uint32_t{HistoryFollow}})
        EXPECT_EQ(ReadStatus(address, {}, Wanted(flags)), HistoryIncomplete);
    TreeSink sink;
    for (const char16_t* const folder : {u"", u"sub"})
        EXPECT_EQ(tree->List(Ole(folder), VARIANT_TRUE, &sink), HistoryIncomplete);
    repository.RemoveObject("HEAD~1");
    EXPECT_EQ(ReadStatus(Address(u"")), HistoryIncomplete);
}

TEST_F(GitHistories, OfARepositoryWithoutCommits)
{
    EXPECT_EQ(ReadStatus(Address(u"a.txt")), HistoryNoRevision);
    WriteBytes(repository / u"a.txt", "1");
    EXPECT_EQ(ReadStatus(Address(u"a.txt")), HistoryNoRevision);
}

TEST_F(GitHistories, OfSettingsThatCantBeReadSayWhy)
{
    repository.Commit(u"a.txt", "1", "first");
    WriteBytes(repository / u".git/config", "[core\nbroken");
    EXPECT_EQ(ReadStatus(Address(u"a.txt")), HistoryBadSettings);
}

// What looks like a repository and is none doesn't lead to the one around it.
TEST_F(GitHistories, OfABrokenRepositoryAreNotThoseOfTheOneAround)
{
    repository.Commit(u"inner/a.txt", "1", "of the outer one");
    fs::create_directories(fs::path(repository / u"inner/.git"));
    WriteBytes(repository / u"inner/.git/HEAD", "nonsense");
    EXPECT_EQ(ReadStatus(Address(u"inner/a.txt")), HistoryNoRepository);
}

// The client is told of the folder around a repository in a list, where such a name is two.
TEST_F(GitHistories, OfFoldersWithTheMarkOfListsInTheirNames)
{
    repository.Commit(u"outer.txt", "1", "of the outer one");
    const bool isPosix = fs::path::preferred_separator == '/';
    const fs::path folder(repository / (isPosix ? u"a:b" : u"a;b"));
    fs::create_directories(folder / "broken/.git");
    WriteBytes((folder / "broken/.git/HEAD").u16string(), "nonsense");
    EXPECT_EQ(ReadStatus((folder / "broken/a.txt").u16string()), HistoryNoRepository);
    fs::create_directories(folder / "bare/objects");
    fs::create_directories(folder / "bare/refs");
    WriteBytes((folder / "bare/HEAD").u16string(), "nonsense");
    EXPECT_EQ(ReadStatus((folder / "bare").u16string()), HistoryNoRepository);
    RunClient("git", Words("init -q -b main good"), folder);
    WriteBytes((folder / "good/a.txt").u16string(), "1");
    RunClient("git", Words("add -A"), folder / "good");
    RunClient("git", Words("-c user.name=A -c user.email=a@b commit -q -m first"), folder / "good");
    RunClient("git", Words("worktree add -q ../linked"), folder / "good");
    RunClient("git", Words("clone -q --bare good good.git"), folder);
    for (const char* const each : {"good/a.txt", "linked/a.txt", "good.git/a.txt", "good"})
        EXPECT_THAT(Descriptions((folder / each).u16string()), ElementsAre(u"first"));
    ComPtr<ITree> tree;
    const auto trees = system.As<IFileSystemTrees>();
    EXPECT_EQ(trees->OpenTree(Ole((folder / "broken").u16string()), nullptr, nullptr, tree.Out()),
              HistoryNoRepository);
    EXPECT_EQ(trees->OpenTree(Ole((folder / "good").u16string()), nullptr, nullptr, tree.Out()),
              S_OK);
}

TEST_F(GitHistories, OfABranchThatIsBrokenFail)
{
    repository.Commit(u"a.txt", "1", "first");
    const std::string second = repository.Commit(u"a.txt", "2", "second");
    const std::string first = repository.Git("rev-parse HEAD~1");
    const fs::path object =
        fs::path(repository / u".git/objects") / first.substr(0, 2) / first.substr(2);
    fs::permissions(object, fs::perms::owner_all);
    fs::remove(object);
    HistorySink sink;
    const Outcome outcome = Read(Address(u"a.txt"), sink);
    EXPECT_THAT(outcome, FailedSaying(HistoryIncomplete, u"The repository doesn't hold all "));
}

TEST_F(GitHistories, ReplacedCommitsAreTheOnesThatWereCommitted)
{
    repository.Commit(u"a.txt", "1", "first");
    const std::string second = repository.Commit(u"a.txt", "2", "second");
    const std::string tree = repository.Git("rev-parse HEAD^{tree}");
    const std::string other = repository.Run({"commit-tree", "-m", "another", tree});
    repository.Git("replace " + second + " " + other);
    EXPECT_THAT(Descriptions(Address(u"a.txt")), ElementsAre(u"second", u"first"));
}

TEST_F(GitHistories, VariablesOfTheHostDoNotLeadElsewhere)
{
    repository.Commit(u"a.txt", "1", "first");
    const Repository other;
    const EnvironmentValue folder("GIT_DIR", EncodeName(other / u".git").value().c_str());
    const EnvironmentValue pattern("GIT_GLOB_PATHSPECS", "1");
    EXPECT_THAT(Descriptions(Address(u"a.txt")), ElementsAre(u"first"));
}

// Whenever the host has had enough, the client is gone and the next history is whole.
TEST_F(GitHistories, EndAtAnyMoment)
{
    std::string input;
    constexpr std::uint32_t count = 3000;
    for (std::uint32_t i = 0; i < count; ++i)
    {
        const std::string number = std::to_string(i);
        input += "commit refs/heads/main\ncommitter A <a@b> " + std::to_string(1000000000 + i) +
                 " +0000\ndata " + std::to_string(number.size()) + "\n" + number +
                 "\nM 644 inline a.txt\ndata " + std::to_string(number.size()) + "\n" + number +
                 "\n";
    }
    ASSERT_EQ(RunClient("git", {.arguments = {u"fast-import", u"--quiet"},
                                .input = input,
                                .folder = repository.Folder().Path()})
                  .exitCode,
              0);
    std::mt19937 random(4);
    // Any number of the first four ways to end.
    const int rounds = IsUnderWine() ? 8 : 20;
    for (int round = 0; round < rounds; ++round)
    {
        HistorySink sink;
        const std::size_t last = 1 + random() % count;
        const bool fails = round % 2 == 0;
        sink.answer = [&] {
            const HRESULT end = fails ? E_FAIL : S_FALSE;
            return sink.entries.size() == last ? end : S_OK;
        };
        const Outcome outcome = Read(Address(u"a.txt"), sink, Wanted(round % 4 < 2 ? 1 : 0));
        EXPECT_EQ(outcome.status, fails ? E_FAIL : S_OK);
        EXPECT_EQ(sink.entries.size(), last);
    }
    EXPECT_EQ(History(Address(u"a.txt")).size(), count);
}

} // namespace
} // namespace tarnwell::test
