// What there was in a revision of a Mercurial repository, where that differs from others.
#include "module/hghistorytest.h"

#include <tarnwell/text.h>

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;
using testing::ElementsAre;

using HgTrees = HgHistories;

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
    EXPECT_THAT(NamesOf(ListOf(tree, {}, true)),
                ElementsAre(u"sub-x", u"sub", u"sub/a", u"sub/b-", u"sub/b-/c", u"sub/b",
                            u"sub/b/c", u"sub0", u"z"));
    EXPECT_THAT(NamesOf(ListOf(tree, u"")), ElementsAre(u"sub-x", u"sub", u"sub0", u"z"));
    EXPECT_THAT(NamesOf(ListOf(tree, u"sub")), ElementsAre(u"sub/a", u"sub/b-", u"sub/b"));
    EXPECT_THAT(NamesOf(ListOf(tree, u"sub/b", true)), ElementsAre(u"sub/b/c"));
}

// A renamed file's content has facts of the renaming in front of it, which aren't its own.
TEST_F(HgTrees, SizesAndContentsOfRenamedFilesAreTheirOwn)
{
    repository.Commit(u"a.txt", "content", "first");
    repository.Hg("rename a.txt b.txt");
    Record("renamed");
    repository.Commit(u"c.txt", "\1\nas if of a renaming\1\n", "odd");
    const auto tree = TreeAt();
    EXPECT_EQ(FindIn(tree, u"b.txt").size, 7U);
    EXPECT_EQ(ContentOf(tree, u"b.txt"), "content");
    EXPECT_EQ(ContentOf(tree, u"c.txt"), "\1\nas if of a renaming\1\n");
}

TEST_F(HgTrees, FiltersDoNotTouchContents)
{
    WriteBytes(repository / u".hg/hgrc", "[decode]\n** = tr a-z A-Z\n[extensions]\neol =\n");
    WriteBytes(repository / u".hgeol", "[patterns]\n** = CRLF\n");
    repository.Run({"--config", "decode.**=cat", "commit", "-q", "-A", "-u", "Ann", "-m", "first"});
    EXPECT_EQ(ContentOf(TreeAt(), u".hgeol"), "[patterns]\n** = CRLF\n");
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
    EXPECT_THAT(NamesOf(ListOf(tree, {}, true)),
                ElementsAre(u".hgsub", u".hgsubstate", u"a", u"a/inside", u"b.txt", u"z"));
    EXPECT_THAT(NamesOf(ListOf(tree, u"")),
                ElementsAre(u".hgsub", u".hgsubstate", u"a", u"b.txt", u"z"));
    EXPECT_THAT(NamesOf(ListOf(tree, u"a", true)), ElementsAre(u"a/inside"));
    const TreeEntry inside = FindIn(tree, u"a/inside");
    EXPECT_EQ(inside.kind, std::uint32_t{TreeRepository});
    EXPECT_EQ(inside.contentId, Widened(id));
    EXPECT_EQ(inside.size, 0U);
    ComPtr<IFileStream> stream;
    EXPECT_EQ(tree->Open(Ole(u"a/inside"), nullptr, stream.Out()), HistoryWrongKind);
    EXPECT_EQ(ContentOf(tree, u"b.txt"), "1");
    EXPECT_FALSE(fs::exists(fs::path(repository / u"a")));
}

TEST_F(HgTrees, OfASparseCheckoutAreWhole)
{
    repository.Commit(u"a.txt", "1", "first");
    repository.Commit(u"b.txt", "content", "second");
    repository.Run({"--config", "extensions.sparse=", "debugsparse", "--include", "a.txt"});
    ASSERT_FALSE(fs::exists(fs::path(repository / u"b.txt")));
    const auto tree = TreeAt();
    EXPECT_THAT(NamesOf(ListOf(tree, {}, true)), ElementsAre(u"a.txt", u"b.txt"));
    EXPECT_EQ(ContentOf(tree, u"b.txt"), "content");
    EXPECT_THAT(Descriptions(Address(u"b.txt")), ElementsAre(u"second"));
}

TEST_F(HgTrees, OfARevisionWithoutFiles)
{
    repository.Commit(u"a.txt", "1", "first");
    repository.Hg("remove a.txt");
    Record("empty");
    const auto tree = TreeAt();
    EXPECT_TRUE(ListOf(tree, {}, true).empty());
    EXPECT_TRUE(ListOf(tree, u"").empty());
    EXPECT_EQ(FindIn(tree, u"").kind, std::uint32_t{TreeFolder});
}

} // namespace
} // namespace tarnwell::test
