// What there was in a revision of a Mercurial repository, where that differs from others.
#include "module/hghistorytest.h"

#include <tarnwell/text.h>

#include <algorithm>
#include <map>
#include <random>
#include <set>
#include <sstream>

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;
using testing::ElementsAre;

class HgTrees : public HgHistories
{
protected:
    static std::vector<std::u16string> NamesIn(const std::vector<TreeEntry>& entries)
    {
        std::vector<std::u16string> names;
        for (const TreeEntry& entry : entries)
            names.push_back(entry.name);
        return names;
    }
    static TreeEntry Found(const ComPtr<ITree>& tree, const std::u16string& name)
    {
        TreeSink sink;
        EXPECT_EQ(tree->Find(Ole(name), &sink), S_OK);
        EXPECT_EQ(sink.entries.size(), 1U);
        return sink.entries.empty() ? TreeEntry() : sink.entries[0];
    }
};

// In the order of all bytes "sub" comes between names that begin with it.
TEST_F(HgTrees, FoldersComeBeforeWhatIsInThem)
{
    for (const char16_t* const name : {u"sub-x", u"sub/a", u"sub/b-/c", u"sub/b/c", u"sub0", u"z"})
    {
        fs::create_directories(fs::path(repository / name).parent_path());
        WriteBytes(repository / name, "1");
    }
    Record("all");
    const auto tree = TreeAt();
    EXPECT_THAT(NamesIn(All(tree)), ElementsAre(u"sub-x", u"sub", u"sub/a", u"sub/b-", u"sub/b-/c",
                                                u"sub/b", u"sub/b/c", u"sub0", u"z"));
    EXPECT_THAT(NamesIn(All(tree, u"", false)), ElementsAre(u"sub-x", u"sub", u"sub0", u"z"));
    EXPECT_THAT(NamesIn(All(tree, u"sub", false)), ElementsAre(u"sub/a", u"sub/b-", u"sub/b"));
    EXPECT_THAT(NamesIn(All(tree, u"sub/b")), ElementsAre(u"sub/b/c"));
}

// A renamed file's content has facts of the renaming in front of it, which aren't its own.
TEST_F(HgTrees, SizesAndContentsOfRenamedFilesAreTheirOwn)
{
    repository.Commit(u"a.txt", "content", "first");
    repository.Hg("rename a.txt b.txt");
    Record("renamed");
    repository.Commit(u"c.txt", "\1\nas if of a renaming\1\n", "odd");
    const auto tree = TreeAt();
    EXPECT_EQ(Found(tree, u"b.txt").size, 7U);
    EXPECT_EQ(ContentIn(tree, u"b.txt"), "content");
    EXPECT_EQ(ContentIn(tree, u"c.txt"), "\1\nas if of a renaming\1\n");
}

TEST_F(HgTrees, FiltersDoNotTouchContents)
{
    WriteBytes(repository / u".hg/hgrc", "[decode]\n** = tr a-z A-Z\n[extensions]\neol =\n");
    WriteBytes(repository / u".hgeol", "[patterns]\n** = CRLF\n");
    repository.Run({"--config", "decode.**=cat", "commit", "-q", "-A", "-u", "Ann", "-m", "first"});
    EXPECT_EQ(ContentIn(TreeAt(), u".hgeol"), "[patterns]\n** = CRLF\n");
}

TEST_F(HgTrees, RepositoriesInsideAreShownAndNotEntered)
{
    const std::string id(40, 'a');
    repository.Commit(u"b.txt", "1", "first");
    WriteBytes(repository / u".hgsub", "a/inside = /elsewhere\nz = [git]/elsewhere\n");
    WriteBytes(repository / u".hgsubstate", id + " a/inside\n" + id + " z\n");
    // Without its own opinion of them the client takes both files as they are.
    const std::string patch = "diff --git a/.hgsub b/.hgsub\nnew file mode 100644\n--- /dev/null\n"
                              "+++ b/.hgsub\n@@ -0,0 +1,2 @@\n+a/inside = /elsewhere\n"
                              "+z = [git]/elsewhere\n"
                              "diff --git a/.hgsubstate b/.hgsubstate\nnew file mode 100644\n"
                              "--- /dev/null\n+++ b/.hgsubstate\n@@ -0,0 +1,2 @@\n+" +
                              id + " a/inside\n+" + id + " z\n";
    fs::remove(repository / u".hgsub");
    fs::remove(repository / u".hgsubstate");
    WriteBytes(repository / u".hg/patch", patch);
    repository.Run({"import", "-q", "--bypass", "-u", "Ann", "-m", "inside", ".hg/patch"});
    const auto tree = TreeAt("tip");
    EXPECT_THAT(NamesIn(All(tree)),
                ElementsAre(u".hgsub", u".hgsubstate", u"a", u"a/inside", u"b.txt", u"z"));
    EXPECT_THAT(NamesIn(All(tree, u"", false)),
                ElementsAre(u".hgsub", u".hgsubstate", u"a", u"b.txt", u"z"));
    EXPECT_THAT(NamesIn(All(tree, u"a")), ElementsAre(u"a/inside"));
    const TreeEntry inside = Found(tree, u"a/inside");
    EXPECT_EQ(inside.kind, std::uint32_t{TreeRepository});
    EXPECT_EQ(inside.contentId, Widened(id));
    EXPECT_EQ(inside.size, 0U);
    ComPtr<IFileStream> stream;
    EXPECT_EQ(tree->Open(Ole(u"a/inside"), nullptr, stream.Out()), HistoryWrongKind);
    EXPECT_EQ(ContentIn(tree, u"b.txt"), "1");
    EXPECT_FALSE(fs::exists(fs::path(repository / u"a")));
}

TEST_F(HgTrees, OfASparseCheckoutAreWhole)
{
    repository.Commit(u"a.txt", "1", "first");
    repository.Commit(u"b.txt", "content", "second");
    repository.Run({"--config", "extensions.sparse=", "debugsparse", "--include", "a.txt"});
    ASSERT_FALSE(fs::exists(fs::path(repository / u"b.txt")));
    const auto tree = TreeAt();
    EXPECT_THAT(NamesIn(All(tree)), ElementsAre(u"a.txt", u"b.txt"));
    EXPECT_EQ(ContentIn(tree, u"b.txt"), "content");
    EXPECT_THAT(ToldOf(Address(u"b.txt")), ElementsAre(u"second"));
}

TEST_F(HgTrees, OfARevisionWithoutFiles)
{
    repository.Commit(u"a.txt", "1", "first");
    repository.Hg("remove a.txt");
    Record("empty");
    const auto tree = TreeAt();
    EXPECT_TRUE(All(tree).empty());
    EXPECT_TRUE(All(tree, u"", false).empty());
    EXPECT_EQ(Found(tree, u"").kind, std::uint32_t{TreeFolder});
}

// A revision as the repository's raw data say: read by commands that ask no history and no tree.
class HgModel : public HgTrees
{
protected:
    struct Raw
    {
        std::string id;
        std::vector<std::string> parents;
        std::map<std::string, std::string> files; // contents' ids, by names
        std::string description;
    };

    // A changeset's data: the manifest's id, the author, the time, the changed files, an empty
    // line, the description.
    Raw RawOf(int number) const
    {
        const std::string rev = std::to_string(number);
        Raw raw;
        const std::string data = repository.Run({"debugdata", "-c", rev}) + "\n";
        raw.description = data.substr(data.find("\n\n") + 2);
        raw.description.pop_back();
        std::istringstream index(repository.Run({"log", "-r", rev, "-T", "{node} {p1node}"}));
        std::string parent;
        index >> raw.id >> parent;
        if (number > 0)
            raw.parents = {parent};
        // The manifest's data: the path, a NUL, the id and a flag in each line.
        const std::string manifest = data.substr(0, 40);
        if (manifest == std::string(40, '0'))
            return raw;
        std::istringstream lines(repository.Run({"debugdata", "-m", manifest}));
        for (std::string line; std::getline(lines, line);)
            raw.files[line.substr(0, line.find('\0'))] = line.substr(line.find('\0') + 1);
        return raw;
    }
};

TEST_F(HgModel, HistoriesAndTreesAreWhatTheRawDataSay)
{
    std::mt19937 random(15);
    const auto below = [&](unsigned bound) {
        return static_cast<unsigned>(random() % bound);
    };
    const std::vector<std::u16string> names = {u"a.txt", u"b/c.txt", u"b/\u00e9 e.txt"};
    const std::vector<std::string> messages = {"plain", "title\n\nbody\n\n\nmore", "!",
                                               "x\n\n.\n\n!", "\xE6\x97\xA5\n\xF0\x9F\x98\x80"};
    int count = 0;
    for (unsigned i = 0; i < 24; ++i)
    {
        for (const std::u16string& name : names)
        {
            const fs::path path(repository / name);
            if (below(5) == 0)
                fs::remove(path);
            else if (below(2) == 0)
            {
                fs::create_directories(path.parent_path());
                WriteBytes(repository / name, std::to_string(below(4)));
            }
        }
        WriteBytes(repository / u"always", std::to_string(i));
        Record(messages[below(5)]);
        ++count;
    }
    std::vector<Raw> raws;
    for (int number = 0; number < count; ++number)
        raws.push_back(RawOf(number));
    for (const std::u16string& name : names)
    {
        const std::string path = EncodeName(name).value();
        std::vector<std::pair<std::string, std::string>> expected;
        for (int number = count - 1; number >= 0; --number)
        {
            const Raw& raw = raws[static_cast<std::size_t>(number)];
            const auto contentIn = [&](int n) {
                if (n < 0)
                    return std::string();
                const auto& files = raws[static_cast<std::size_t>(n)].files;
                const auto found = files.find(path);
                return found == files.end() ? std::string() : found->second;
            };
            if (contentIn(number) != contentIn(number - 1))
                expected.emplace_back(raw.id, raw.description);
        }
        std::vector<std::pair<std::string, std::string>> found;
        for (const HistoryEntry& entry : History(Address(name)))
            found.emplace_back(EncodeName(entry.id).value(), EncodeName(entry.description).value());
        EXPECT_EQ(found, expected) << path;
        EXPECT_GT(found.size(), 5U);
    }
    for (const int number : {0, count / 2, count - 1})
    {
        const Raw& raw = raws[static_cast<std::size_t>(number)];
        const auto tree = TreeAt(raw.id);
        std::map<std::string, std::string> found;
        for (const TreeEntry& entry : All(tree))
        {
            if (entry.kind == TreeFolder)
                continue;
            found[EncodeName(entry.name).value()] = EncodeName(entry.contentId).value();
            EXPECT_EQ(ContentIn(tree, entry.name).size(), entry.size);
        }
        EXPECT_EQ(found, raw.files);
    }
}

} // namespace
} // namespace tarnwell::test
