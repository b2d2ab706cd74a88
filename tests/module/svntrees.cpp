// Trees of Subversion's revisions, on real file repositories.
#include "module/svnstricttest.h"

namespace tarnwell::test
{
namespace
{

using testing::ElementsAre;
using testing::UnorderedElementsAre;

class SvnTrees : public SvnStrict
{
};

TEST_F(SvnTrees, TellWhatPropertiesSay)
{
    repository.MakeFolder("sub");
    repository.CommitMarked("sub/pro gram", "#!", "svn:executable");
    repository.CommitMarked("sub/link", "link a/b", "svn:special");
    repository.CommitMarked("sub/special", "of its own kind", "svn:special");
    repository.CommitMarked("sub/other", "12", "svn:needs-lock");
    const auto tree = Tree(repository.Address());
    for (const bool recursive : {false, true})
    {
        for (const TreeEntry& entry : ListOf(tree, u"sub", recursive))
        {
            const TreeEntry found = FindIn(tree, entry.name);
            EXPECT_EQ(found.kind, entry.kind);
            EXPECT_EQ(found.flags, entry.flags);
            EXPECT_EQ(found.size, entry.size);
        }
    }
    EXPECT_EQ(FindIn(tree, u"sub/pro gram").flags, std::uint32_t{TreeItemExecutable});
    EXPECT_EQ(FindIn(tree, u"sub/link").kind, std::uint32_t{TreeLink});
    EXPECT_EQ(FindIn(tree, u"sub/link").size, 3U);
    EXPECT_EQ(FindIn(tree, u"sub/other").kind, std::uint32_t{TreeFile});
    EXPECT_EQ(ContentOf(tree, u"sub/link"), "a/b");
    EXPECT_EQ(ContentOf(tree, u"sub/special"), "of its own kind");
    EXPECT_EQ(ContentOf(tree, u"sub/other"), "12");
    EXPECT_EQ(ContentOf(Tree(repository.Address(u"sub/link"))), "a/b");
}

TEST_F(SvnTrees, ContentsAreAsTheyWereRecorded)
{
    const std::string text = "$Id$ $Author$\nline\n";
    repository.Commit("a.txt", text);
    repository.Change({"propset", "svn:keywords", "Id Author", "a.txt", "propset", "svn:eol-style",
                       "native", "a.txt"});
    std::string all;
    for (int i = 0; i < 256; ++i)
        all += static_cast<char>(i);
    repository.Commit("binary", all);
    const auto tree = Tree(repository.Address());
    EXPECT_EQ(ContentOf(tree, u"a.txt"), text);
    EXPECT_EQ(ContentOf(tree, u"binary"), all);
    EXPECT_EQ(FindIn(tree, u"a.txt").flags, TreeItemKeywords | TreeItemLineEnds);
    EXPECT_EQ(FindIn(tree, u"binary").flags, 0U);
    for (const TreeEntry& entry : ListOf(tree))
        EXPECT_EQ(entry.flags, FindIn(tree, entry.name).flags);
}

TEST_F(SvnTrees, StayWhatTheyWere)
{
    repository.Commit("a.txt", "one");
    const auto tree = Tree(repository.Address());
    repository.Commit("a.txt", "two");
    repository.Commit("b.txt", "new");
    EXPECT_EQ(ContentOf(tree, u"a.txt"), "one");
    EXPECT_THAT(NamesOf(ListOf(tree)), ElementsAre(u"a.txt"));
    EXPECT_EQ(FindFailure(tree, u"b.txt").status, HistoryNoPath);
}

// The time is that of the revision, also where it changed something else.
TEST_F(SvnTrees, AreOfARevision)
{
    const int first = repository.Commit("a.txt", "one", "first");
    const int second = repository.Commit("b.txt", "x", "second");
    const auto tree = Tree(repository.Address(u"a.txt@" + Number(second)));
    EXPECT_EQ(IdOf(tree), Number(second));
    EXPECT_EQ(TimeOf(tree), History(repository.Address(u"b.txt"))[0].time);
    EXPECT_EQ(TimeOf(Tree(repository.Address(u"a.txt@" + Number(first)))),
              History(repository.Address(u"a.txt"))[0].time);
}

TEST_F(SvnTrees, FoldersOfOneFileAreNoFiles)
{
    repository.MakeFolder("x");
    repository.Commit("x/x", "1");
    const auto tree = Tree(repository.Address());
    EXPECT_THAT(NamesOf(ListOf(tree, u"x")), ElementsAre(u"x/x"));
    EXPECT_EQ(ListFailure(tree, u"x/x").status, HistoryWrongKind);
}

TEST_F(SvnTrees, NamesOfAllKindsInFolders)
{
    const std::vector<std::u16string> names = {u"d#1/a b%41.txt", u"d#1/@", u"d#1/\u00e4\u65e5",
                                               u"d#1/e?;&\"", u"d#1/-n"};
    repository.MakeFolder("d%231");
    for (const std::u16string& name : names)
    {
        const std::string bytes = EncodeName(name).value();
        std::string encoded;
        for (const char byte : bytes)
            encoded += byte == '%' ? "%25" : byte == '#' ? "%23" : std::string(1, byte);
        repository.Commit(encoded, bytes);
    }
    const auto tree = Tree(repository.Address());
    EXPECT_THAT(NamesOf(ListOf(tree, u"d#1")), testing::UnorderedElementsAreArray(names));
    for (const std::u16string& name : names)
        EXPECT_EQ(ContentOf(tree, name), EncodeName(name).value());
}

} // namespace
} // namespace tarnwell::test
