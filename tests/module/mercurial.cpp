// The Mercurial file system of the finished module on real repositories.
#include "module/mercurialtest.h"
#include "support/environmentvalue.h"

#include <tarnwell/text.h>

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;

// What the client finds in its user's settings.
class Settings
{
public:
    explicit Settings(std::string_view text)
    {
        WriteBytes(folder_ / u"hgrc", text);
    }

private:
    const TempFolder folder_;
    const EnvironmentValue variable_{"HGRCPATH", EncodeName(folder_ / u"hgrc").value().c_str()};
};

TEST_F(Mercurial, TimesAreThoseOfTheChangesetsWhateverTheirZone)
{
    repository.Commit(u"a.txt", "one", "first", {"-d", "1234567890 -3600"});
    repository.Commit(u"a.txt", "two", "second", {"-d", "1234567890 7200"});
    const auto list = Revisions(Address(u"a.txt"));
    ASSERT_EQ(list.size(), 3U);
    EXPECT_EQ(list[0].id, u"");
    for (const Revision& revision : {list[1], list[2]})
    {
        EXPECT_EQ(revision.time, 128790414900000000U);
        EXPECT_EQ(revision.modified, revision.time);
    }
}

TEST_F(Mercurial, WithoutARevisionTheWorkingFoldersParentIsMeant)
{
    const std::string first = repository.Commit(u"a.txt", "first", "first");
    repository.Commit(u"a.txt", "second", "second");
    WriteBytes(repository / u"a.txt", "changed");
    EXPECT_EQ(Content(Address(u"a.txt")), "second");
    repository.Hg("update -q -C -r " + first);
    EXPECT_EQ(Content(Address(u"a.txt")), "first");
}

TEST_F(Mercurial, DescriptionsKeepTheirLines)
{
    repository.Commit(u"a.txt", "1", "one\ntwo\n  three");
    repository.Commit(u"a.txt", "2", "a\tb\n\tindented");
    repository.Commit(u"a.txt", "3", "!\n!");
    EXPECT_THAT(Descriptions(u"a.txt"),
                testing::ElementsAre(u"!\n!", u"a\tb\nindented", u"one\ntwo\nthree"));
}

TEST_F(Mercurial, AnEmptyLineInADescriptionEndsTheList)
{
    repository.Commit(u"a.txt", "1", "oldest");
    repository.Commit(u"a.txt", "2", "one paragraph\n\nand another");
    repository.Commit(u"a.txt", "3", "newest");
    EXPECT_THAT(Descriptions(u"a.txt"), testing::ElementsAre(u"newest"));
}

TEST_F(Mercurial, RenamedFilesListWhatCameSince)
{
    repository.Commit(u"old.txt", "bytes", "first");
    repository.Hg("rename old.txt new.txt");
    repository.Hg("commit -u Ann -m renamed");
    EXPECT_THAT(Descriptions(u"new.txt"), testing::ElementsAre(u"renamed"));
}

TEST_F(Mercurial, ADeletedFileListsItsRevisions)
{
    const std::string number = repository.Commit(u"gone.txt", "bytes", "first");
    repository.Hg("remove gone.txt");
    repository.Hg("commit -u Ann -m removed");
    EXPECT_THAT(Descriptions(u"gone.txt"), testing::ElementsAre(u"first"));
    EXPECT_EQ(Content(Address(u"gone.txt", number)), "bytes");
}

TEST_F(Mercurial, AllHeadsAreListed)
{
    repository.Commit(u"a.txt", "base", "base");
    repository.Commit(u"a.txt", "left", "left");
    repository.Hg("update -q -C -r 0");
    repository.Commit(u"a.txt", "right", "right");
    EXPECT_EQ(repository.Hg("heads -T {rev},"), "2,1,");
    EXPECT_THAT(Descriptions(u"a.txt"), testing::ElementsAre(u"right", u"left", u"base"));
    EXPECT_EQ(Content(Address(u"a.txt", "1")), "left");
}

TEST_F(Mercurial, OutsideARepositoryTheClientComplains)
{
    const TempFolder outside;
    WriteBytes(outside / u"a.txt", "x");
    const std::u16string address = u"hg://" + (outside / u"a.txt");
    const Outcome outcome = FailedOpen(address);
    EXPECT_EQ(outcome.status, E_FAIL);
    ASSERT_TRUE(outcome.error);
    EXPECT_TRUE(WithLineFeeds(outcome.error->text)
                    .starts_with(u"An error occurred while accessing \"" + address +
                                 u"\"\n\nabort: no repository found in '"))
        << fs::path(outcome.error->text);
}

TEST_F(Mercurial, ABrokenExtensionsWarningFailsTheOpening)
{
    repository.Commit(u"a.txt", "1", "first");
    const Settings settings("[extensions]\nbroken = /nowhere/broken.py\n");
    const Outcome outcome = FailedOpen(Address(u"a.txt"));
    EXPECT_EQ(outcome.status, E_FAIL);
    ASSERT_TRUE(outcome.error);
    EXPECT_NE(outcome.error->text.find(u"*** failed to import extension"), std::u16string::npos);
    EXPECT_TRUE(Revisions(Address(u"a.txt")).empty());
    EXPECT_FALSE(HasRevisions(Address(u"a.txt")));
}

TEST_F(Mercurial, ANegativeNumberIsARevision)
{
    repository.Commit(u"a.txt", "1", "first");
    repository.Commit(u"a.txt", "2", "second");
    EXPECT_EQ(Content(Address(u"a.txt", "-1")), "2");
    EXPECT_EQ(Content(Address(u"a.txt", "-2")), "1");
}

} // namespace
} // namespace tarnwell::test
