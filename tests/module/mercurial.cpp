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

TEST_F(Mercurial, ListsTheRevisionsOfAFileNewestFirst)
{
    repository.Commit(u"a.txt", "one", "first", {"-d", "1234567890 -3600"});
    repository.Commit(u"b.txt", "other", "not this one");
    repository.Commit(u"a.txt", "two", "second", {"-d", "1234567890 7200"});
    const auto list = Revisions(Address(u"a.txt"));
    ASSERT_EQ(list.size(), 3U);
    EXPECT_EQ(list[0].description, u"Working Copy");
    EXPECT_EQ(list[0].uri, repository / u"a.txt");
    EXPECT_EQ(list[0].id, u"");
    EXPECT_EQ(list[1].id, u"2");
    EXPECT_EQ(list[1].description, u"second");
    EXPECT_EQ(list[1].author, u"Ann <ann@example.org>");
    EXPECT_EQ(list[1].uri, Address(u"a.txt", "2"));
    EXPECT_EQ(list[2].id, u"0");
    for (const Revision& revision : {list[1], list[2]})
    {
        EXPECT_EQ(revision.time, 128790414900000000U);
        EXPECT_EQ(revision.modified, revision.time);
    }
    EXPECT_EQ(Content(list[1].uri), "two");
    EXPECT_EQ(Content(list[2].uri), "one");
    EXPECT_TRUE(HasRevisions(Address(u"a.txt")));
}

TEST_F(Mercurial, PathsAndAddressesAreAskedAlike)
{
    repository.Commit(u"a.txt", "one", "first");
    EXPECT_EQ(Revisions(repository / u"a.txt").size(), 2U);
    EXPECT_EQ(Revisions(Address(u"a.txt", "abc")).size(), 2U);
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

TEST_F(Mercurial, NamesWithBlanksAndOtherLetters)
{
    for (const char16_t* name : {u"a b.txt", u"\u00e4\u65e5\u672c.txt", u"sub dir/d\u00e9ep/x.txt"})
    {
        const std::string number =
            repository.Commit(name, "bytes", "subject", {"-u", "\xC3\x9Cml\xC3\xA4ut"});
        const auto list = Revisions(Address(name));
        ASSERT_EQ(list.size(), 2U);
        EXPECT_EQ(list[1].author, u"\u00dcml\u00e4ut");
        EXPECT_EQ(Content(Address(name, number)), "bytes");
    }
}

TEST_F(Mercurial, AMarkerInAFoldersNameDoesNoHarmInFrontOfARevision)
{
    const std::string number = repository.Commit(u"x#y/a.txt", "bytes", "subject");
    const std::u16string address = Address(u"x#y/a.txt", number);
    EXPECT_EQ(Content(address), "bytes");
    const auto list = Revisions(address);
    ASSERT_EQ(list.size(), 2U);
    EXPECT_EQ(list[0].uri, repository / u"x#y/a.txt");
    EXPECT_EQ(list[1].uri, address);
    EXPECT_TRUE(Revisions(Address(u"x#y/a.txt")).empty());
}

TEST_F(Mercurial, ContentIsByteForByte)
{
    const std::string binary("\0\r\n\xFF\x1A\0end", 9);
    const std::string number = repository.Commit(u"bin", binary, "binary");
    const std::string empty = repository.Commit(u"bin", "", "emptied");
    EXPECT_EQ(Content(Address(u"bin", number)), binary);
    EXPECT_EQ(Content(Address(u"bin", empty)), "");
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

TEST_F(Mercurial, AFolderHasNoHistory)
{
    repository.Commit(u"sub/a.txt", "1", "first");
    EXPECT_FALSE(HasRevisions(Address(u"sub")));
    EXPECT_TRUE(Revisions(Address(u"sub")).empty());
}

TEST_F(Mercurial, WithoutHistoryThereIsNoWorkingCopyEither)
{
    repository.Commit(u"a.txt", "1", "first");
    WriteBytes(repository / u"untracked.txt", "x");
    EXPECT_TRUE(Revisions(Address(u"untracked.txt")).empty());
    const TempFolder outside;
    WriteBytes(outside / u"a.txt", "x");
    EXPECT_FALSE(HasRevisions(u"hg://" + (outside / u"a.txt")));
}

TEST_F(Mercurial, ErrorTextFailsTheOpening)
{
    repository.Commit(u"a.txt", "1", "first");
    const std::u16string address = Address(u"a.txt", "99");
    const Outcome outcome = FailedOpen(address);
    EXPECT_EQ(outcome.status, E_FAIL);
    ASSERT_TRUE(outcome.error);
    const std::u16string text = WithLineFeeds(outcome.error->text);
    EXPECT_TRUE(text.starts_with(u"An error occurred while accessing \"" + address +
                                 u"\"\n\nabort: unknown revision '99' [hgobjects@"))
        << fs::path(text);
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

// The client works at the root of the drive.
TEST_F(Mercurial, RelativePathsDoNotOpenNorList)
{
    repository.Commit(u"a.txt", "1", "first");
    const CurrentFolder inside(fs::path(repository / u"a.txt").parent_path());
    EXPECT_EQ(FailedOpen(u"hg://a.txt").status, E_FAIL);
    EXPECT_TRUE(Revisions(u"hg://a.txt").empty());
    EXPECT_TRUE(Revisions(u"a.txt").empty());
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

// Hosts set HGPLAIN for their clients, as the guide for hosts tells.
TEST_F(Mercurial, AnAliasOfTheUsersCountsWithoutPlainOutput)
{
    repository.Commit(u"a.txt", "1", "first");
    const Settings settings("[alias]\nlog = log --limit 0\n");
    EXPECT_EQ(Revisions(Address(u"a.txt")).size(), 0U);
    const EnvironmentValue plain("HGPLAIN", "1");
    EXPECT_EQ(Revisions(Address(u"a.txt")).size(), 2U);
}

TEST_F(Mercurial, AMissingClientIsNamed)
{
    repository.Commit(u"a.txt", "1", "first");
    const EnvironmentValue path("PATH", "nowhere");
    const Outcome outcome = FailedOpen(Address(u"a.txt"));
    EXPECT_EQ(outcome.status, Win32Status(2));
    ASSERT_TRUE(outcome.error);
    EXPECT_TRUE(outcome.error->text.starts_with(
        u"Can't find the Mercurial command line utility (hg.exe). Please check that the Mercurial "
        u"client is correctly installed. "))
        << fs::path(outcome.error->text);
    EXPECT_FALSE(HasRevisions(Address(u"a.txt")));
    EXPECT_TRUE(Revisions(Address(u"a.txt")).empty());
}

TEST_F(Mercurial, OtherSchemesAreRefused)
{
    for (const char16_t* address : {u"HG://x", u"git://x"})
    {
        ComPtr<IFile> file;
        const Outcome outcome =
            OutcomeOf([&] { return system->GetFile(Ole(address), VARIANT_FALSE, file.Out()); });
        EXPECT_EQ(outcome.status, E_INVALIDARG);
        ASSERT_TRUE(outcome.error);
        EXPECT_TRUE(outcome.error->text.starts_with(u"Invalid Mercurial URI \"" +
                                                    std::u16string(address) + u"\"."))
            << fs::path(outcome.error->text);
    }
}

// The client would load what stands in that folder's settings, or in the option.
TEST_F(Mercurial, WhatTheClientWouldReadAsAnOptionIsRefusedBeforeItStarts)
{
    repository.Commit(u"a.txt", "1", "first");
    const std::u16string file = u"hg://" + (repository / u"a.txt");
    const EnvironmentValue path("PATH", "nowhere");
    for (const std::u16string& address :
         {file + u"#--config=alias.cat=!touch x", file + u"#--", file + u"#-R/other", file + u"#-",
          std::u16string(u"hg://--config=alias.cat=!touch x"), std::u16string(u"hg://-R/other#1")})
    {
        const Outcome outcome = FailedOpen(address);
        EXPECT_EQ(outcome.status, E_INVALIDARG);
        ASSERT_TRUE(outcome.error);
        EXPECT_TRUE(outcome.error->text.starts_with(u"Invalid Mercurial URI \"" + address + u"\"."))
            << fs::path(outcome.error->text);
    }
    EXPECT_TRUE(Revisions(u"hg://--config=alias.log=!touch x").empty());
}

TEST_F(Mercurial, ANegativeNumberIsARevision)
{
    repository.Commit(u"a.txt", "1", "first");
    repository.Commit(u"a.txt", "2", "second");
    EXPECT_EQ(Content(Address(u"a.txt", "-1")), "2");
    EXPECT_EQ(Content(Address(u"a.txt", "-2")), "1");
}

TEST_F(Mercurial, OpensExistingFilesForReadingOnly)
{
    const std::u16string address = Address(u"a.txt");
    const auto file = File(address);
    for (const auto& [access, disposition] :
         {std::pair{writeAccess, openExisting}, std::pair{readAccess | writeAccess, openExisting},
          std::pair{readAccess, openAlways}, std::pair{0U, openExisting}})
    {
        ComPtr<IFileStream> stream;
        const Outcome outcome =
            OutcomeOf([&] { return file->Open(access, disposition, stream.Out()); });
        EXPECT_EQ(outcome.status, E_INVALIDARG);
        ASSERT_TRUE(outcome.error);
        EXPECT_TRUE(outcome.error->text.starts_with(u"Failed to open \"" + address +
                                                    u"\" for reading or writing. [hgobjects@"));
    }
}

TEST_F(Mercurial, HasNoFoldersAndTellsNoFacts)
{
    ComPtr<IFolder> folder;
    const Outcome noFolder = OutcomeOf(
        [&] { return system->GetFolder(Ole(Address(u"sub")), VARIANT_FALSE, folder.Out()); });
    EXPECT_EQ(noFolder.status, E_NOTIMPL);
    ASSERT_TRUE(noFolder.error);
    EXPECT_TRUE(noFolder.error->text.starts_with(u"Failed to create a support object. "));
    const auto item = File(Address(u"a.txt", "12")).As<IFileSystemItem>();
    std::uint32_t attributes = 0;
    EXPECT_EQ(item->GetAttributes(&attributes), E_NOTIMPL);
    Bstr name;
    EXPECT_EQ(item->GetName(name.Out()), S_OK);
    EXPECT_EQ(name.View(), u"a.txt#12");
    Bstr url;
    EXPECT_EQ(item.As<IFileSystemItemComparableUrl>()->GetComparableUrl(url.Out()), S_OK);
    EXPECT_EQ(url.View(), Address(u"a.txt"));
}

} // namespace
} // namespace tarnwell::test
