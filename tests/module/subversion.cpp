// The Subversion file system of the finished module on real file repositories.
#include "module/svntest.h"

#include <tarnwell/text.h>

namespace tarnwell::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

std::u16string Numbered(const std::u16string& address, int revision)
{
    const std::string number = std::to_string(revision);
    return address + u"@" + std::u16string(number.begin(), number.end());
}

class Subversion : public SvnTest
{
protected:
    std::vector<std::u16string> Names(const std::u16string& address) const
    {
        std::vector<std::u16string> names;
        for (const Facts& facts : List(address))
            names.push_back(facts.name);
        return names;
    }

    const SvnRepository repository_;
};

TEST_F(Subversion, AListingTellsAllFacts)
{
    repository_.MakeFolder("trunk");
    const int changed = repository_.Commit("trunk/a.txt", "hello");
    const int last = repository_.MakeFolder("trunk/sub");
    const std::u16string trunk = repository_.ListedAddress(u"trunk");
    const auto items = List(repository_.Address(u"trunk"));
    ASSERT_EQ(items.size(), 2U);
    EXPECT_EQ(items[0].path, Numbered(trunk + u"/a.txt", changed));
    EXPECT_EQ(items[0].name, u"a.txt");
    EXPECT_EQ(items[0].parent, trunk);
    EXPECT_EQ(items[0].attributes, 129U);
    EXPECT_EQ(items[0].size, 5U);
    EXPECT_GT(items[0].time, 133000000000000000U);
    EXPECT_EQ(items[1].path, trunk + u"/sub");
    EXPECT_EQ(items[1].attributes, 16U);
    EXPECT_GT(items[1].time, items[0].time);
    EXPECT_LT(changed, last);
}

TEST_F(Subversion, EmptyFoldersAndTheRepositoryItselfAreListed)
{
    EXPECT_THAT(Names(repository_.Address()), IsEmpty());
    repository_.MakeFolder("empty");
    repository_.Commit("a.txt", "1");
    EXPECT_THAT(Names(repository_.Address()), ElementsAre(u"a.txt", u"empty"));
    EXPECT_THAT(Names(repository_.Address() + u"/"), ElementsAre(u"a.txt", u"empty"));
    EXPECT_THAT(Names(repository_.Address(u"empty")), IsEmpty());
}

TEST_F(Subversion, ARevisionOfAFolderIsHandedToFoldersAndNotToFiles)
{
    repository_.MakeFolder("trunk");
    repository_.MakeFolder("trunk/sub");
    const int first = repository_.Commit("trunk/sub/a.txt", "one");
    const int second = repository_.Commit("trunk/b.txt", "x");
    repository_.Commit("trunk/sub/a.txt", "changed");
    repository_.Commit("trunk/sub/new.txt", "later");
    const std::u16string trunk = repository_.ListedAddress(u"trunk");
    const auto items = List(Numbered(repository_.Address(u"trunk"), second));
    ASSERT_EQ(items.size(), 2U);
    EXPECT_EQ(items[0].path, Numbered(trunk + u"/b.txt", second));
    EXPECT_EQ(items[1].path, Numbered(trunk + u"/sub", second));
    EXPECT_EQ(items[1].name, u"sub");
    const auto below = List(items[1].path);
    ASSERT_EQ(below.size(), 1U) << "as it was then";
    EXPECT_EQ(below[0].path, Numbered(trunk + u"/sub/a.txt", first));
    EXPECT_EQ(Content(below[0].path), "one");
    EXPECT_EQ(List(trunk + u"/sub@HEAD").size(), 2U);
}

TEST_F(Subversion, FoldersWithOtherCharactersAreListedAndTheirFilesOpened)
{
    repository_.MakeFolder("my d\xC3\xA9r #1");
    repository_.Commit("my d\xC3\xA9r #1/x y.txt", "deep");
    const auto folders = List(repository_.Address());
    ASSERT_EQ(folders.size(), 1U);
    const auto below = List(folders[0].path);
    ASSERT_EQ(below.size(), 1U);
    EXPECT_EQ(below[0].name, u"x y.txt");
    EXPECT_EQ(Content(below[0].path), "deep");
    EXPECT_EQ(FileFacts(below[0].path), below[0]);
}

TEST_F(Subversion, TheListingsFolderIsEncodedAndItsNamesAreNot)
{
    repository_.MakeFolder("my dir");
    const int revision = repository_.Commit("my dir/x y.txt", "1");
    const auto items = List(repository_.Address(u"my dir"));
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(items[0].path, Numbered(repository_.ListedAddress(u"my%20dir/x y.txt"), revision));
    EXPECT_EQ(items[0].name, u"x y.txt");
}

TEST_F(Subversion, AFileNamedWithAMarkerCannotBeOpened)
{
    repository_.Commit("a@b.txt", "1");
    const auto items = List(repository_.Address());
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(items[0].name, u"a@b.txt");
    EXPECT_EQ(FailedOpen(items[0].path).status, E_FAIL);
    EXPECT_EQ(FailedOpen(repository_.Address(u"a@b.txt")).status, E_FAIL);
    EXPECT_FALSE(HasRevisions(items[0].path));
}

TEST_F(Subversion, APercentAndTwoDigitsIsTheCharacter)
{
    repository_.Commit("A.txt", "A");
    EXPECT_EQ(Content(repository_.Address(u"%41.txt")), "A");
}

TEST_F(Subversion, AFileThatIsGoneCannotBeOpenedByItsOldRevision)
{
    const int revision = repository_.Commit("gone.txt", "1");
    repository_.Remove("gone.txt");
    const std::u16string address = Numbered(repository_.Address(u"gone.txt"), revision);
    const Outcome outcome = FailedOpen(address);
    EXPECT_EQ(outcome.status, E_FAIL);
    EXPECT_TRUE(WithLineFeeds(outcome.error->text).starts_with(AccessFailed(address, u"svn: ")));
    EXPECT_FALSE(HasRevisions(address));
}

TEST_F(Subversion, TheLatestRevisionHasAName)
{
    repository_.Commit("a.txt", "one", "first");
    repository_.Commit("b.txt", "x", "another file");
    const std::u16string address = repository_.Address(u"a.txt");
    EXPECT_EQ(Revisions(address + u"@HEAD"), Revisions(address));
    EXPECT_EQ(Content(address + u"@HEAD"), "one");
}

TEST_F(Subversion, FoldersHaveAHistoryToo)
{
    repository_.MakeFolder("trunk");
    repository_.Commit("trunk/a.txt", "one");
    EXPECT_EQ(Revisions(repository_.Address(u"trunk")).size(), 2U);
}

TEST_F(Subversion, ACommitWithoutAnAuthorHidesTheWholeHistory)
{
    const int first = repository_.Commit("a.txt", "one");
    repository_.Commit("a.txt", "two");
    repository_.ForgetAuthor(first);
    EXPECT_THAT(Revisions(repository_.Address(u"a.txt")), IsEmpty());
    EXPECT_FALSE(HasRevisions(repository_.Address(u"a.txt")));
    EXPECT_EQ(Content(Numbered(repository_.Address(u"a.txt"), first)), "one");
    EXPECT_EQ(List(repository_.Address()).size(), 1U);
}

TEST_F(Subversion, ExternalsAndPropertiesDoNotMatter)
{
    repository_.MakeFolder("trunk");
    repository_.Commit("trunk/a.txt", "line\n");
    const TempFolder copy;
    const std::string folder = copy.Path().string();
    repository_.Svn({"checkout", "-q", repository_.Url() + "/trunk", folder});
    repository_.Svn({"propset", "-q", "svn:externals", "^/trunk ext", folder});
    repository_.Svn({"propset", "-q", "svn:eol-style", "CRLF", folder + "/a.txt"});
    repository_.Svn({"propset", "-q", "svn:keywords", "Id", folder + "/a.txt"});
    repository_.Svn({"commit", "-q", "-m", "properties", folder});
    EXPECT_THAT(Names(repository_.Address(u"trunk")), ElementsAre(u"a.txt"));
    EXPECT_EQ(Revisions(repository_.Address(u"trunk/a.txt")).size(), 2U);
}

TEST_F(Subversion, AFailedQuestionIsAskedAgain)
{
    const std::u16string address = repository_.Address(u"a.txt");
    const auto item = File(address).As<IFileSystemItem>();
    std::uint32_t attributes = 7;
    const Outcome outcome = OutcomeOf([&] { return item->GetAttributes(&attributes); });
    EXPECT_EQ(outcome.status, E_FAIL);
    EXPECT_TRUE(WithLineFeeds(outcome.error->text).starts_with(AccessFailed(address, u"svn: ")));
    EXPECT_EQ(attributes, 0U);
    repository_.Commit("a.txt", "1");
    EXPECT_EQ(item->GetAttributes(&attributes), S_OK);
    EXPECT_EQ(attributes, 129U);
}

} // namespace
} // namespace tarnwell::test
