// Subversion's histories told in full, on real file repositories.
#include "module/svnstricttest.h"

#include <filesystem>

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

class SvnHistories : public SvnStrict
{
};

TEST_F(SvnHistories, FollowAFileThroughItsNamesAndItsFolders)
{
    repository.MakeFolder("trunk");
    repository.Commit("trunk/a.txt", "one", "made");
    repository.Rename("trunk/a.txt", "trunk/b c.txt", "renamed");
    repository.Change({"cp", "HEAD", "trunk", "branch"}, "Ann", "branched");
    repository.Commit("branch/b c.txt", "two", "changed");
    const std::u16string address = repository.Address(u"branch/b c.txt");
    EXPECT_THAT(Descriptions(address), ElementsAre(u"changed", u"branched"));
    const auto entries = History(address, Wanted(HistoryFollow));
    ASSERT_THAT(DescriptionsOf(entries), ElementsAre(u"changed", u"branched", u"renamed", u"made"));
    EXPECT_EQ(entries[0].path, u"branch/b c.txt");
    EXPECT_EQ(entries[1].path, u"branch/b c.txt");
    EXPECT_EQ(entries[2].path, u"trunk/b c.txt");
    EXPECT_EQ(entries[3].path, u"trunk/a.txt");
    EXPECT_EQ(entries[3].address, repository.Address(u"trunk/a.txt@" + entries[3].id));
    EXPECT_EQ(ContentOf(Tree(entries[3].address)), "one");
    EXPECT_EQ(ContentOf(Tree(entries[0].address)), "two");
    // A folder is followed likewise.
    EXPECT_THAT(Descriptions(repository.Address(u"branch"), Wanted(HistoryFollow)),
                ElementsAre(u"changed", u"branched", u"renamed", u"made", u"folder"));
    EXPECT_THAT(Descriptions(address, Wanted(HistoryFollow, 2)), ElementsAre(u"renamed", u"made"));
}

// An address is of the item that had this path then, whatever has it now.
TEST_F(SvnHistories, OfWhatWasMadeAgainAreOfOneItemOnly)
{
    const int first = repository.Commit("a.txt", "old", "made");
    repository.Commit("a.txt", "older", "changed");
    repository.Remove("a.txt");
    repository.Commit("other.txt", "x", "of another");
    const int second = repository.Commit("a.txt", "new", "made again");
    EXPECT_THAT(Descriptions(repository.Address(u"a.txt")), ElementsAre(u"made again"));
    const std::u16string old = repository.Address(u"a.txt@" + Number(first));
    EXPECT_THAT(Descriptions(old), ElementsAre(u"made"));
    EXPECT_EQ(ContentOf(Tree(old)), "old");
    EXPECT_EQ(ContentOf(Tree(repository.Address(u"a.txt@" + Number(second)))), "new");
    EXPECT_EQ(TreeFailure(repository.Address(u"a.txt@" + Number(second - 1))).status,
              HistoryNoPath);
}

TEST_F(SvnHistories, OfWhatIsGoneBeginWithItsRemoval)
{
    repository.MakeFolder("sub");
    repository.Commit("sub/a b.txt", "1", "made");
    repository.Commit("sub/a b.txt", "2", "changed");
    const int removal = repository.Remove("sub/a b.txt", "gone");
    repository.Commit("other.txt", "x", "of another");
    const std::u16string address = repository.Address(u"sub/a b.txt");
    const auto entries = History(address);
    ASSERT_THAT(DescriptionsOf(entries), ElementsAre(u"gone", u"changed", u"made"));
    EXPECT_EQ(entries[0].id, Number(removal));
    EXPECT_EQ(entries[0].path, u"sub/a b.txt");
    EXPECT_EQ(ContentOf(Tree(entries[1].address)), "2");
    EXPECT_THAT(Descriptions(address, Wanted(0, 1, 1)), ElementsAre(u"changed"));
    // And with that of a folder around it.
    repository.Commit("sub/c.txt", "3", "made too");
    repository.Remove("sub", "all gone");
    EXPECT_THAT(Descriptions(repository.Address(u"sub/c.txt")),
                ElementsAre(u"all gone", u"made too"));
    EXPECT_THAT(Descriptions(address), ElementsAre(u"gone", u"changed", u"made"));
    EXPECT_EQ(HistoryFailure(repository.Address(u"sub/d.txt")).status, HistoryNoPath);
}

TEST_F(SvnHistories, DescriptionsAreWhole)
{
    const std::vector<std::string> messages = {"",
                                               "\n\nblank lines\n\n\nin between",
                                               "<tag> & \"quotes\" ]]> '&amp;'",
                                               "\xC3\xA4\xE6\x97\xA5\xF0\x9F\x98\x80",
                                               "------\nr1 | Ann",
                                               "  blanks and\ttabs  "};
    for (const std::string& message : messages)
        repository.Commit("a.txt", "of " + message, message);
    const auto found = Descriptions(repository.Address(u"a.txt"));
    ASSERT_EQ(found.size(), messages.size());
    for (std::size_t i = 0; i < found.size(); ++i)
        EXPECT_EQ(EncodeName(found[found.size() - 1 - i]), messages[i]);
}

TEST_F(SvnHistories, WhatARevisionLacksIsEmpty)
{
    const int revision = repository.Commit("a.txt", "1", "first");
    repository.ForgetAuthor(revision);
    const auto entries = History(repository.Address(u"a.txt"));
    ASSERT_EQ(entries.size(), 1U);
    EXPECT_EQ(entries[0].author, u"");
    EXPECT_EQ(entries[0].description, u"first");
}

TEST_F(SvnHistories, OfARepositoryWithoutRevisions)
{
    EXPECT_EQ(HistoryFailure(repository.Address()).status, HistoryNoRevision);
    EXPECT_EQ(HistoryFailure(repository.Address(u"a.txt")).status, HistoryNoPath);
    const auto tree = Tree(repository.Address());
    EXPECT_THAT(ListOf(tree), IsEmpty());
    EXPECT_EQ(IdOf(tree), u"0");
}

TEST_F(SvnHistories, NamesHoldWhatMeansSomethingElsewhere)
{
    const int revision = repository.Commit("%2541@9.txt", "x", "percents and a mark");
    const auto entries = History(repository.Address());
    ASSERT_EQ(entries.size(), 1U);
    const std::u16string literal = repository.Address(u"%2541@9.txt");
    const auto of = History(literal, Wanted(), u"HEAD");
    ASSERT_EQ(of.size(), 1U);
    EXPECT_EQ(of[0].path, u"%41@9.txt");
    EXPECT_EQ(of[0].address, literal + u"@" + Number(revision));
    EXPECT_EQ(History(of[0].address), of);
    EXPECT_EQ(ContentOf(Tree(of[0].address)), "x");
    EXPECT_EQ(ContentOf(Tree(repository.Address()), u"%41@9.txt"), "x");
    // Without a revision the mark is one.
    EXPECT_EQ(HistoryFailure(literal).status, HistoryNoRevision);
}

TEST_F(SvnHistories, AddressesOfAnyForm)
{
    repository.MakeFolder("my dir");
    const int revision = repository.Commit("my dir/a.txt", "1", "first");
    for (const char16_t* const name : {u"my dir/a.txt", u"my%20dir/a.txt", u"my dir//a.txt",
                                       u"./my dir/./a.txt", u"my dir/a.txt/"})
    {
        const auto entries = History(repository.Address(name));
        ASSERT_EQ(entries.size(), 1U) << testing::PrintToString(std::u16string(name));
        EXPECT_EQ(entries[0].address, repository.Address(u"my dir/a.txt@" + Number(revision)));
    }
    EXPECT_EQ(HistoryFailure(repository.Address(u"../r")).status, E_INVALIDARG);
}

class SvnCopies : public SvnStrict
{
protected:
    SvnCopies()
    {
        repository.MakeFolder("sub");
        first_ = repository.Commit("sub/a@b.txt", "one", "first");
        repository.CheckOut(copy_.Path() / "w");
        repository.Commit("sub/a@b.txt", "two", "later");
    }
    std::u16string Path(const char16_t* name) const
    {
        return (copy_.Path() / "w" / name).u16string();
    }

    const TempFolder copy_;
    int first_ = 0;
};

TEST_F(SvnCopies, AreAtWhatIsCheckedOut)
{
    const std::u16string path = Path(u"sub/a@b.txt");
    EXPECT_THAT(Descriptions(path), ElementsAre(u"first"));
    EXPECT_THAT(Descriptions(path, Wanted(), u"HEAD"), ElementsAre(u"later", u"first"));
    EXPECT_THAT(Descriptions(path, Wanted(), u"BASE"), ElementsAre(u"first"));
    EXPECT_THAT(Descriptions(path, Wanted(), u"COMMITTED"), ElementsAre(u"first"));
    EXPECT_EQ(HistoryFailure(path, u"PREV").status, HistoryNoPath);
    EXPECT_EQ(ContentOf(Tree(path)), "one");
    EXPECT_EQ(ContentOf(Tree(path, u"HEAD")), "two");
    const auto entries = History(path);
    ASSERT_EQ(entries.size(), 1U);
    EXPECT_EQ(entries[0].path, u"sub/a@b.txt");
    EXPECT_EQ(entries[0].address, repository.ListedAddress(u"sub/a@b.txt@" + Number(first_)));
    EXPECT_EQ(History(entries[0].address), entries);
    EXPECT_EQ(ListOf(Tree(Path(u"")), {}, true).size(), 2U);
}

TEST_F(SvnCopies, BeginWithThemIfWanted)
{
    const std::u16string path = Path(u"sub/a@b.txt");
    const auto entries = History(path, Wanted(HistoryWorkingCopy, 0, 1), u"HEAD");
    ASSERT_EQ(entries.size(), 2U);
    EXPECT_EQ(entries[0].description, u"Working Copy");
    EXPECT_EQ(entries[0].id + entries[0].author, u"");
    EXPECT_EQ(fs::path(entries[0].address), fs::path(path));
    EXPECT_EQ(entries[0].path, u"sub/a@b.txt");
    EXPECT_EQ(entries[1].description, u"later");
    EXPECT_THAT(Descriptions(path, Wanted(HistoryWorkingCopy, 1), u"HEAD"), ElementsAre(u"first"));
    // An address is of no working copy.
    EXPECT_THAT(Descriptions(repository.Address(u"sub"), Wanted(HistoryWorkingCopy, 0, 1)),
                ElementsAre(u"later"));
}

TEST_F(SvnCopies, WhatWasNeverCommittedHasOnlyThem)
{
    WriteBytes(Path(u"new.txt"), "new");
    WriteBytes(Path(u"unknown.txt"), "new");
    repository.Svn({"add", "-q", fs::path(Path(u"new.txt")).string()});
    for (const char16_t* const name : {u"new.txt", u"unknown.txt"})
    {
        EXPECT_THAT(Descriptions(Path(name), Wanted(HistoryWorkingCopy)),
                    ElementsAre(u"Working Copy"));
        ExpectBothFail(Path(name), HistoryNoPath);
    }
}

TEST_F(SvnCopies, WhatIsGoneFromThemHasAHistory)
{
    repository.Remove("sub/a@b.txt", "gone");
    repository.Svn({"update", "-q", fs::path(Path(u"")).string()});
    EXPECT_THAT(Descriptions(Path(u"sub/a@b.txt")), ElementsAre(u"gone", u"later", u"first"));
    EXPECT_EQ(HistoryFailure(Path(u"sub/none")).status, HistoryNoPath);
    const TempFolder other;
    ExpectBothFail(other / u"a.txt", HistoryNoRepository);
}

} // namespace
} // namespace tarnwell::test
