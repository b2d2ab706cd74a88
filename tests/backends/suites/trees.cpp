// What trees of revisions hold. How they are asked is in treecalls.cpp, why there is none in
// strictfailures.cpp.
#include "backends/suites/stricttest.h"

#include <tarnwell/text.h>

#include <algorithm>

namespace tarnwell::test
{
namespace
{

using testing::ElementsAre;
using testing::UnorderedElementsAreArray;

class Trees : public StrictTest
{
protected:
    // The names of all files, as the tree of the whole has them.
    std::vector<std::u16string> Expected(const std::map<std::u16string, std::string>& files) const
    {
        std::vector<std::u16string> names;
        for (const auto& [name, bytes] : files)
            names.push_back(Strictly().data->NameInTree(name));
        return names;
    }
    std::u16string InTree(std::u16string_view name) const
    {
        return Strictly().data->NameInTree(name);
    }
};

std::vector<std::u16string> NamesOfContents(const std::vector<TreeEntry>& entries)
{
    std::vector<std::u16string> names;
    for (const TreeEntry& entry : entries)
    {
        if (entry.kind != TreeFolder)
            names.push_back(entry.name);
    }
    return names;
}

std::u16string FolderOf(const std::u16string& name)
{
    const std::size_t slash = name.rfind(u'/');
    return slash == std::u16string::npos ? std::u16string() : name.substr(0, slash);
}

TEST_P(Trees, ShowWhatThereWas)
{
    const auto first = Tree(AddressAt(u"", Strictly().firstId));
    const auto last = LastTree();
    EXPECT_THAT(NamesOfContents(ListOf(first, {}, true)),
                UnorderedElementsAreArray(Expected(Strictly().firstFiles)));
    EXPECT_THAT(NamesOfContents(ListOf(last, {}, true)),
                UnorderedElementsAreArray(Expected(Strictly().lastFiles)));
    EXPECT_EQ(IdOf(first), Strictly().firstId);
    EXPECT_EQ(IdOf(last), Strictly().lastId);
    EXPECT_EQ(ContentOf(first, u"text.txt"), "first");
    EXPECT_EQ(ContentOf(last, u"text.txt"), "content");
}

TEST_P(Trees, AreOfTheRevisionThatHistoriesTellOf)
{
    for (const HistoryEntry& entry : History(Strictly().data->Address(u"text.txt")))
    {
        const auto tree = Tree(entry.address);
        EXPECT_EQ(IdOf(tree), entry.id);
        EXPECT_EQ(TimeOf(tree), entry.time);
    }
}

TEST_P(Trees, AreNamedByAllThatTheSystemUnderstands)
{
    const std::u16string whole = Strictly().data->Address(u"");
    EXPECT_EQ(IdOf(Tree(whole)), Strictly().lastId);
    EXPECT_EQ(IdOf(Tree(whole, Strictly().firstId)), Strictly().firstId);
    for (const std::u16string& name : Strictly().namesOfFirst)
        EXPECT_EQ(IdOf(Tree(whole, name)), Strictly().firstId) << testing::PrintToString(name);
}

TEST_P(Trees, ListAFolderOrAllThatIsBelowIt)
{
    const auto tree = LastTree();
    const auto all = ListOf(tree, {}, true);
    std::vector<std::u16string> ofTop, ofSub, belowSub;
    for (const TreeEntry& entry : all)
    {
        const std::u16string folder = FolderOf(entry.name);
        if (folder.empty())
            ofTop.push_back(entry.name);
        if (folder == u"sub")
            ofSub.push_back(entry.name);
        if (entry.name.starts_with(u"sub/"))
            belowSub.push_back(entry.name);
        // A folder comes before what is in it.
        const auto earlier = std::find_if(all.begin(), all.end(), [&](const TreeEntry& each) {
            return each.name == folder && each.kind == TreeFolder;
        });
        EXPECT_TRUE(folder.empty() || (earlier != all.end() && &*earlier < &entry))
            << testing::PrintToString(entry.name);
    }
    EXPECT_THAT(NamesOf(ListOf(tree)), UnorderedElementsAreArray(ofTop));
    EXPECT_THAT(NamesOf(ListOf(tree, u"sub")), UnorderedElementsAreArray(ofSub));
    EXPECT_THAT(NamesOf(ListOf(tree, u"sub", true)), UnorderedElementsAreArray(belowSub));
    EXPECT_THAT(ofSub, testing::UnorderedElementsAre(u"sub/deep", u"sub/inner.txt",
                                                     InTree(u"sub/new name.txt")));
}

TEST_P(Trees, TellTheSameFactsHoweverTheyAreAsked)
{
    const auto tree = LastTree();
    for (const bool recursive : {false, true})
    {
        for (const TreeEntry& entry : ListOf(tree, {}, recursive))
        {
            const TreeEntry found = FindIn(tree, entry.name);
            EXPECT_EQ(found.name, entry.name);
            EXPECT_EQ(found.kind, entry.kind);
            EXPECT_EQ(found.flags, entry.flags);
            EXPECT_EQ(found.size, entry.size);
            EXPECT_EQ(found.contentId, entry.contentId);
            EXPECT_EQ(found.modified, entry.modified);
        }
    }
}

TEST_P(Trees, TellFacts)
{
    const auto tree = LastTree();
    const auto expect = [&](std::u16string_view name, TreeItemKind kind, std::uint32_t flags,
                            std::uint64_t size) {
        const TreeEntry entry = FindIn(tree, InTree(name));
        EXPECT_EQ(entry.kind, std::uint32_t{kind}) << testing::PrintToString(name);
        EXPECT_EQ(entry.flags & TreeItemExecutable, flags) << testing::PrintToString(name);
        EXPECT_EQ(entry.size, size) << testing::PrintToString(name);
        EXPECT_EQ(entry.modified, TimeOf(tree));
    };
    expect(u"", TreeFolder, 0, 0);
    expect(u"sub", TreeFolder, 0, 0);
    expect(u"text.txt", TreeFile, 0, 7);
    expect(u"empty", TreeFile, 0, 0);
    expect(u"large", TreeFile, 0, largeContent.size());
    if (Row().strict.links)
        expect(u"link", TreeLink, 0, 8);
    if (Row().strict.programs)
        expect(u"program", TreeFile, TreeItemExecutable, 10);
}

TEST_P(Trees, ContentsThatAreEqualHaveEqualIds)
{
    const auto tree = LastTree();
    const std::u16string same = FindIn(tree, u"same.txt").contentId;
    if (!Row().strict.contentIds)
    {
        EXPECT_EQ(same, u"");
        return;
    }
    EXPECT_NE(same, u"");
    EXPECT_EQ(FindIn(tree, u"sub/inner.txt").contentId, same);
    EXPECT_NE(FindIn(tree, u"text.txt").contentId, same);
    const auto first = Tree(AddressAt(u"", Strictly().firstId));
    EXPECT_EQ(FindIn(first, u"same.txt").contentId, same);
    EXPECT_NE(FindIn(first, u"text.txt").contentId, FindIn(tree, u"text.txt").contentId);
}

TEST_P(Trees, ContentsAreByteForByte)
{
    const auto tree = LastTree();
    // More than once, in another order each time, as one client may answer all of them.
    for (int round = 0; round < 2; ++round)
    {
        EXPECT_EQ(ContentOf(tree, u"binary"), binaryContent);
        EXPECT_EQ(ContentOf(tree, u"empty"), "");
        EXPECT_TRUE(ContentOf(tree, u"large") == largeContent);
        EXPECT_EQ(ContentOf(tree, u"text.txt"), "content");
        EXPECT_EQ(ContentOf(tree, u"sub/deep/bottom.txt"), "bottom");
        EXPECT_EQ(ContentOf(tree, u"again.txt"), "2");
        if (Row().strict.links)
        {
            EXPECT_EQ(ContentOf(tree, u"link"), "text.txt");
        }
    }
}

TEST_P(Trees, OfNamesOfAllKinds)
{
    const auto tree = LastTree();
    for (const auto& names : {Row().names, Row().strict.names})
    {
        for (const std::u16string_view name : names)
        {
            const std::string bytes = EncodeName(name).value();
            EXPECT_EQ(ContentOf(tree, InTree(name)), bytes);
            const auto alone = Tree(Strictly().data->Address(name), Strictly().lastId);
            EXPECT_EQ(ContentOf(alone), bytes);
            EXPECT_EQ(FindIn(alone, u"").size, bytes.size());
        }
    }
}

TEST_P(Trees, MayBeginAtAFolder)
{
    const auto tree = Tree(AddressAt(u"sub", Strictly().lastId));
    EXPECT_THAT(NamesOf(ListOf(tree, {}, true)),
                testing::UnorderedElementsAre(u"deep", u"deep/bottom.txt", u"inner.txt",
                                              InTree(u"new name.txt")));
    EXPECT_THAT(NamesOf(ListOf(tree, u"deep")), ElementsAre(u"deep/bottom.txt"));
    EXPECT_EQ(ContentOf(tree, u"deep/bottom.txt"), "bottom");
    EXPECT_EQ(FindIn(tree, u"").name, u"");
    EXPECT_EQ(FindIn(tree, u"").kind, std::uint32_t{TreeFolder});
    EXPECT_EQ(FindFailure(tree, u"text.txt").status, HistoryNoPath);
    EXPECT_EQ(FindFailure(tree, u"../text.txt").status, HistoryNoPath);
}

TEST_P(Trees, MayBeginAtAFile)
{
    const auto tree = Tree(AddressAt(u"sub/inner.txt", Strictly().lastId));
    EXPECT_EQ(ContentOf(tree), "inner");
    const TreeEntry entry = FindIn(tree, u"");
    EXPECT_EQ(entry.name, u"");
    EXPECT_EQ(entry.kind, std::uint32_t{TreeFile});
    EXPECT_EQ(entry.size, 5U);
    for (const bool recursive : {false, true})
    {
        EXPECT_THAT(
            ListFailure(tree, u"", recursive),
            FailedSaying(HistoryWrongKind, u"\"" + AddressAt(u"sub/inner.txt", Strictly().lastId) +
                                               u"\" isn't a folder."));
    }
    EXPECT_EQ(FindFailure(tree, u"x").status, HistoryNoPath);
}

TEST_P(Trees, OfWhatIsGoneAreInTheRevisionsBefore)
{
    EXPECT_EQ(ContentOf(Tree(AddressAt(u"gone.txt", Strictly().beforeGoneId))), "of no use");
    EXPECT_EQ(TreeFailure(AddressAt(u"gone.txt", Strictly().lastId)).status, HistoryNoPath);
    EXPECT_EQ(FindFailure(LastTree(), u"gone.txt").status, HistoryNoPath);
    EXPECT_EQ(FindFailure(LastTree(), u"old.txt").status, HistoryNoPath);
}

TEST_P(Trees, NamesAreExact)
{
    const auto tree = LastTree();
    for (const char16_t* const name :
         {u"none", u"text.txt/x", u"TEXT.TXT", u"*", u"text.tx?", u"text.txt ", u"../text.txt",
          u"./text.txt", u"sub/../text.txt", u"/text.txt", u"sub//inner.txt", u"text.txt\n",
          u"text.txt/", u"sub/", u"-", u"--help", u"\xD800"})
    {
        EXPECT_THAT(FindFailure(tree, name),
                    FailedSaying(HistoryNoPath, u"Can't find \"" + std::u16string(name) + u"\" in"))
            << testing::PrintToString(name);
        EXPECT_EQ(OpenFailure(tree, name).status, HistoryNoPath) << testing::PrintToString(name);
        for (const bool recursive : {false, true})
        {
            EXPECT_EQ(ListFailure(tree, name, recursive).status, HistoryNoPath)
                << testing::PrintToString(name);
        }
    }
    EXPECT_EQ(ContentOf(tree, u"text.txt"), "content");
}

TEST_P(Trees, TellTheKindThatIsNeeded)
{
    const auto tree = LastTree();
    for (const bool recursive : {false, true})
    {
        EXPECT_THAT(ListFailure(tree, u"text.txt", recursive),
                    FailedSaying(HistoryWrongKind, u"\"text.txt\" isn't a folder."));
    }
    EXPECT_THAT(OpenFailure(tree, u"sub"),
                FailedSaying(HistoryWrongKind, u"\"sub\" isn't a file."));
    EXPECT_EQ(OpenFailure(tree, u"").status, HistoryWrongKind);
}

TARNWELL_OVER_BACKENDS(Trees, BackendsThat(ShowsTrees));

} // namespace
} // namespace tarnwell::test
