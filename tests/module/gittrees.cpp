// What there was in a revision of a Git repository: items, listings, contents.
#include "module/githistorytest.h"
#include "support/clients.h"
#include "support/environmentvalue.h"

#include <tarnwell/text.h>

#include <algorithm>
#include <random>
#include <sstream>

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

class GitTrees : public GitHistories
{
protected:
    // What a command prints that reads its input.
    std::string WithInput(const std::vector<std::u16string>& arguments,
                          const std::string& input) const
    {
        const ProcessRun run = RunClient(
            "git", {.arguments = arguments, .input = input, .folder = repository.Folder().Path()});
        EXPECT_EQ(run.exitCode, 0) << run.errors;
        return run.output.substr(0, run.output.find('\n'));
    }
};

TEST_F(GitTrees, TellFacts)
{
    repository.Commit(u"plain", "12345", "first");
    const std::string blob = repository.Git("rev-parse HEAD:plain");
    const std::string commit = repository.Git("rev-parse HEAD");
    WriteBytes(repository / u".git/entries", "100755 " + blob + "\tprogram\n120000 " + blob +
                                                 "\tlink\n160000 " + commit + "\tmodule\n100644 " +
                                                 blob + "\tsub/x\n");
    ASSERT_EQ(RunClient("git", {.arguments = {u"update-index", u"--add", u"--index-info"},
                                .input = ReadBytes(repository / u".git/entries"),
                                .folder = repository.Folder().Path()})
                  .exitCode,
              0);
    repository.Git("commit -q -m all");
    const auto tree = TreeAt();
    for (const bool recursive : {false, true})
    {
        for (const TreeEntry& entry : ListOf(tree, {}, recursive))
        {
            const TreeEntry found = FindIn(tree, entry.name);
            EXPECT_EQ(found.kind, entry.kind);
            EXPECT_EQ(found.flags, entry.flags);
            EXPECT_EQ(found.size, entry.size);
            EXPECT_EQ(found.contentId, entry.contentId);
            EXPECT_EQ(found.modified, entry.modified);
        }
    }
    const auto expect = [&](const char16_t* name, TreeItemKind kind, std::uint32_t flags,
                            std::uint64_t size) {
        const TreeEntry entry = FindIn(tree, name);
        EXPECT_EQ(entry.kind, std::uint32_t{kind});
        EXPECT_EQ(entry.flags, flags);
        EXPECT_EQ(entry.size, size);
        EXPECT_GT(entry.modified, 133000000000000000U);
    };
    expect(u"plain", TreeFile, 0, 5);
    expect(u"program", TreeFile, TreeItemExecutable, 5);
    expect(u"link", TreeLink, 0, 5);
    expect(u"module", TreeRepository, 0, 0);
    expect(u"sub", TreeFolder, 0, 0);
    expect(u"", TreeFolder, 0, 0);
    EXPECT_EQ(FindIn(tree, u"plain").contentId, Widened(blob));
    EXPECT_EQ(FindIn(tree, u"module").contentId, Widened(commit));
    EXPECT_EQ(ContentOf(tree, u"link"), "12345");
    EXPECT_EQ(FindFailure(tree, u"module/x").status, HistoryNoPath);
    ComPtr<IFileStream> stream;
    for (const char16_t* const name : {u"", u"sub", u"module"})
        EXPECT_EQ(tree->Open(Ole(name), nullptr, stream.Out()), HistoryWrongKind);
}

TEST_F(GitTrees, ContentsAreByteForByte)
{
    const std::string all = [] {
        std::string bytes;
        for (int i = 0; i < 256; ++i)
            bytes += static_cast<char>(i);
        return bytes;
    }();
    std::string large;
    while (large.size() < 5'000'000)
        large += all;
    WriteBytes(repository / u".gitattributes", "* text=auto eol=crlf ident\n");
    repository.Commit(u"binary", all + "\r\n\n", "binary");
    repository.Commit(u"large", large, "large");
    repository.Commit(u"empty", "", "empty");
    WriteBytes(repository / u".gitattributes", "");
    const auto tree = TreeAt();
    for (int i = 0; i < 2; ++i)
    {
        EXPECT_EQ(ContentOf(tree, u"binary").size(), all.size() + 3);
        EXPECT_EQ(ContentOf(tree, u"large"), large);
        EXPECT_EQ(ContentOf(tree, u"empty"), "");
    }
}

TEST_F(GitTrees, SayWhatIsMissing)
{
    EXPECT_EQ(TreeStatus(Address(u"")), HistoryNoRevision);
    repository.Commit(u"a.txt", "1", "first");
    EXPECT_EQ(TreeStatus(Address(u"none")), HistoryNoPath);
    for (const char* const revision : {"none", "HEAD:a.txt", "-x", "a..b", "^HEAD", "HEAD^{tree}"})
        EXPECT_EQ(TreeStatus(Address(u"a.txt", revision)), HistoryNoRevision) << revision;
    const TempFolder other;
    EXPECT_EQ(TreeStatus(other / u"a.txt"), HistoryNoRepository);
    EXPECT_EQ(TreeStatus(u"hg://x"), E_INVALIDARG);
    const EnvironmentValue path("PATH", other.Path().string().c_str());
    EXPECT_EQ(TreeStatus(Address(u"a.txt")), HistoryNoClient);
}

TEST_F(GitTrees, OfLinkedWorkingTreesBareRepositoriesAndLongIds)
{
    repository.Commit(u"sub/a.txt", "1", "first");
    const TempFolder other;
    const std::u16string linked = other / u"linked";
    repository.Run({"worktree", "add", "-q", EncodeName(linked).value()});
    EXPECT_EQ(ContentOf(Tree(u"git://" + Joined(linked, u"sub/a.txt"))), "1");
    const std::u16string bare = other / u"bare";
    repository.Run({"clone", "-q", "--bare", ".", EncodeName(bare).value()});
    EXPECT_EQ(ContentOf(Tree(bare), u"sub/a.txt"), "1");
    const TempFolder folder;
    RunClient("git", Words("init -q -b main --object-format=sha256"), folder.Path());
    WriteBytes(folder / u"a.txt", "long");
    RunClient("git", Words("add -A"), folder.Path());
    RunClient("git", Words("-c user.name=A -c user.email=a@b commit -q -m first"), folder.Path());
    EXPECT_EQ(ContentOf(Tree(folder.Path().u16string()), u"a.txt"), "long");
    EXPECT_THAT(NamesOf(ListOf(Tree(folder.Path().u16string()), {}, true)), ElementsAre(u"a.txt"));
}

TEST_F(GitTrees, OfSubmodulesShallowClonesAndSparseCheckouts)
{
    repository.Commit(u"sub/a.txt", "1", "first");
    repository.Commit(u"sub/a.txt", "2", "second");
    const TempFolder other;
    const std::u16string shallow = other / u"shallow";
    repository.Run({"clone", "-q", "--depth=1", "--no-local", ".", EncodeName(shallow).value()});
    EXPECT_EQ(ContentOf(Tree(shallow), u"sub/a.txt"), "2");
    EXPECT_EQ(TreeStatus(u"git://" + shallow + u"#HEAD~1"), HistoryNoRevision);

    const Repository around;
    around.Commit(u"x.txt", "outer", "of the outer one");
    around.Run({"-c", "protocol.file.allow=always", "submodule", "add", "-q",
                EncodeName(repository.Folder().Text()).value(), "module"});
    around.Git("commit -q -m added");
    EXPECT_EQ(ContentOf(Tree(around / u"module"), u"sub/a.txt"), "2");
    EXPECT_EQ(ContentOf(Tree(around / u"module/sub/a.txt")), "2");
    const auto outer = Tree(around.Folder().Text());
    EXPECT_EQ(FindIn(outer, u"module").kind, std::uint32_t{TreeRepository});
    EXPECT_EQ(ListFailure(outer, u"module").status, HistoryWrongKind);

    repository.Commit(u"out/b.txt", "b", "third");
    repository.Git("sparse-checkout set sub");
    ASSERT_FALSE(fs::exists(fs::path(repository / u"out/b.txt")));
    EXPECT_EQ(ContentOf(TreeAt(), u"out/b.txt"), "b");
}

TEST_F(GitTrees, OfAPartialCloneFetchNothingAndSayWhy)
{
    repository.Commit(u"sub/a.txt", "1", "first");
    repository.Git("config uploadpack.allowFilter true");
    const TempFolder other;
    const std::u16string clone = other / u"clone";
    repository.Run({"clone", "-q", "--filter=blob:none", "--bare", "--no-local", ".",
                    EncodeName(clone).value()});
    const auto tree = Tree(clone);
    EXPECT_THAT(NamesOf(ListOf(tree)), ElementsAre(u"sub"));
    ComPtr<IFileStream> stream;
    EXPECT_EQ(tree->Open(Ole(u"sub/a.txt"), nullptr, stream.Out()), HistoryIncomplete);
    TreeSink sink;
    EXPECT_EQ(tree->List(Ole(u"sub"), VARIANT_FALSE, &sink), HistoryIncomplete);
    EXPECT_EQ(tree->List(Ole(u""), VARIANT_TRUE, &sink), HistoryIncomplete);
    EXPECT_THAT(NamesOf(ListOf(tree)), ElementsAre(u"sub"));
}

// A tree that nobody's client would write can't lead out of a folder.
TEST_F(GitTrees, NamesThatAreNoneAreRefused)
{
    repository.Commit(u"a.txt", "1", "first");
    const std::string blob = repository.Git("rev-parse HEAD:a.txt");
    std::string raw = "100644 ..";
    raw += '\0';
    for (std::size_t i = 0; i < blob.size(); i += 2)
        raw += static_cast<char>(std::stoi(blob.substr(i, 2), nullptr, 16));
    WriteBytes(repository / u".git/raw", raw);
    const std::string tree = repository.Git("hash-object -t tree -w --literally .git/raw");
    const std::string commit = repository.Run({"commit-tree", "-m", "bad", tree});
    const auto bad = TreeAt(commit);
    TreeSink sink;
    EXPECT_EQ(bad->List(Ole(u""), VARIANT_FALSE, &sink), HistoryBadAnswer);
    EXPECT_EQ(bad->List(Ole(u""), VARIANT_TRUE, &sink), HistoryBadAnswer);
    EXPECT_THAT(sink.entries, IsEmpty());
}

// Also where they would separate names in a path.
TEST_F(GitTrees, NamesHaveAnyOtherCharacters)
{
    repository.Commit(u"a/b", "apart", "first");
    const std::string apart = repository.Git("rev-parse HEAD:a/b");
    const std::string blob = WithInput({u"hash-object", u"-w", u"--stdin"}, "1");
    const std::string folder = WithInput({u"mktree"}, "100644 blob " + blob + "\tx\n");
    const std::string tree =
        WithInput({u"mktree"}, "040000 tree " + folder + "\tc\\d\n" + "100644 blob " + blob +
                                   "\te:f\n" + "040000 tree " + repository.Git("rev-parse HEAD:a") +
                                   "\ta\n" + "100644 blob " + blob + "\ta\\b\n");
    const auto odd = TreeAt(repository.Run({"commit-tree", "-m", "odd", tree}));
    EXPECT_THAT(NamesOf(ListOf(odd, {}, true)),
                testing::UnorderedElementsAre(u"a", u"a/b", u"a\\b", u"c\\d", u"c\\d/x", u"e:f"));
    EXPECT_THAT(NamesOf(ListOf(odd, u"c\\d")), ElementsAre(u"c\\d/x"));
    EXPECT_EQ(FindIn(odd, u"a\\b").contentId, Widened(blob));
    EXPECT_EQ(FindIn(odd, u"a/b").contentId, Widened(apart));
    EXPECT_EQ(ContentOf(odd, u"a\\b"), "1");
    EXPECT_EQ(ContentOf(odd, u"a/b"), "apart");
    EXPECT_EQ(ContentOf(odd, u"c\\d/x"), "1");
    EXPECT_EQ(ContentOf(odd, u"e:f"), "1");
    TreeSink sink;
    EXPECT_EQ(odd->Find(Ole(u"c/d/x"), &sink), HistoryNoPath);
    EXPECT_EQ(odd->Find(Ole(u"c\\d\\x"), &sink), HistoryNoPath);
}

// As old clients wrote them.
TEST_F(GitTrees, FoldersHaveOddModes)
{
    repository.Commit(u"sub/a", "1", "first");
    const auto entry = [&](const std::string& start, const std::string& object) {
        const std::string id = repository.Git("rev-parse " + object);
        std::string bytes = start;
        bytes += '\0';
        for (std::size_t i = 0; i < id.size(); i += 2)
            bytes += static_cast<char>(std::stoi(id.substr(i, 2), nullptr, 16));
        return bytes;
    };
    WriteBytes(repository / u".git/raw",
               entry("100664 f", "HEAD:sub/a") + entry("40755 sub", "HEAD:sub"));
    const std::string raw = repository.Git("hash-object -t tree -w --literally .git/raw");
    const auto tree = TreeAt(repository.Run({"commit-tree", "-m", "old", raw}));
    for (const bool recursive : {false, true})
        EXPECT_EQ(ListOf(tree, {}, recursive)[1].kind, static_cast<std::uint32_t>(TreeFolder));
    EXPECT_THAT(NamesOf(ListOf(tree, u"sub")), ElementsAre(u"sub/a"));
    EXPECT_EQ(ContentOf(tree, u"sub/a"), "1");
    EXPECT_EQ(FindIn(tree, u"f").flags, 0U);
}

// What was generated, read again by the client's other commands.
TEST_F(GitTrees, AreWhatTheObjectsSay)
{
    std::mt19937 random(3);
    const std::vector<std::u16string> parts = {u"a", u"b c", u"d\u00e9", u"\U0001F600", u"e.f"};
    for (int commit = 0; commit < 5; ++commit)
    {
        for (int i = 0; i < 12; ++i)
        {
            std::u16string name;
            for (std::size_t depth = random() % 3; depth > 0; --depth)
                name += u"f" + parts[random() % parts.size()] + u"/";
            name += parts[random() % parts.size()];
            const fs::path path(repository / name);
            fs::create_directories(path.parent_path());
            WriteBytes(repository / name, std::string(random() % 300, 'x'));
        }
        repository.Git("add -A");
        repository.Git("commit -q --allow-empty -m some");
    }
    for (const char* const revision : {"HEAD", "HEAD~2", "HEAD~4"})
    {
        const auto tree = TreeAt(revision);
        std::vector<std::u16string> expected;
        std::string listed = repository.Run({"ls-tree", "-r", "-z", "--name-only", revision});
        listed += listed.ends_with('\0') ? "" : std::string(1, '\0');
        for (std::size_t at = 0; at < listed.size(); at = listed.find('\0', at) + 1)
            expected.push_back(DecodeName(listed.substr(at, listed.find('\0', at) - at)));
        std::vector<std::u16string> found;
        for (const TreeEntry& entry : ListOf(tree, {}, true))
        {
            if (entry.kind == TreeFolder)
                continue;
            found.push_back(entry.name);
            EXPECT_EQ(ContentOf(tree, entry.name).size(), entry.size);
        }
        EXPECT_EQ(found, expected);
        EXPECT_GT(found.size(), 5U);
    }
}

// Work trees on Windows can't have them; revisions can.
TEST_F(GitTrees, NamesThatAreNoTextComeAsTheyAre)
{
    repository.Commit(u"a.txt", "1", "first");
    const std::string blob = repository.Git("rev-parse HEAD:a.txt");
    const std::string latin = "d\xFCr/caf\xE9.txt";
    const std::string japanese = "\x95\x5C.txt"; // whose second byte is a backslash
    std::string entries;
    for (const std::string& name : {latin, japanese})
        entries += "100644 " + blob + "\t" + name + '\0';
    WithInput({u"update-index", u"-z", u"--add", u"--index-info"}, entries);
    const std::string commit =
        repository.Run({"commit-tree", "-p", "HEAD", "-m", "added", repository.Git("write-tree")});
    const auto tree = TreeAt(commit);
    EXPECT_THAT(FilesIn(tree),
                testing::UnorderedElementsAre(u"a.txt", DecodeName(latin), DecodeName(japanese)));
    for (const std::string& name : {latin, japanese})
    {
        const std::u16string text = DecodeName(name);
        EXPECT_EQ(FindIn(tree, text).contentId, DecodeName(blob));
        EXPECT_EQ(ContentOf(tree, text), "1");
        // No address on Windows has a backslash in a name.
        if (fs::path::preferred_separator == '\\' && name == japanese)
            continue;
        EXPECT_EQ(ContentOf(Tree(Address(text, commit))), "1");
        const auto history = History(Address(text, commit));
        ASSERT_EQ(history.size(), 1U);
        EXPECT_EQ(history[0].description, u"added");
        EXPECT_EQ(history[0].path, text);
    }
}

} // namespace
} // namespace tarnwell::test
