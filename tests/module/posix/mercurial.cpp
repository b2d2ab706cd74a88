// The Mercurial file system of the finished module on real repositories.
#include "module/workingcopytest.h"
#include "support/posix/environmentvalue.h"
#include "support/posix/mercurialrepository.h"

#include <cstdlib>
#include <sys/stat.h>

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;

class Mercurial : public WorkingCopyTest
{
protected:
    Mercurial() : WorkingCopyTest(CLSID_HGFileSystem) {}

    std::u16string Address(std::u16string_view name, const std::string& revision = {}) const
    {
        const std::u16string path = u"hg://" + (repository_ / name);
        return revision.empty() ? path
                                : path + u"#" + std::u16string(revision.begin(), revision.end());
    }

    // The lists' descriptions behind the working copy's.
    std::vector<std::u16string> Descriptions(std::u16string_view name) const
    {
        std::vector<std::u16string> found;
        for (const Revision& revision : Revisions(Address(name)))
            found.push_back(revision.description);
        if (!found.empty())
            found.erase(found.begin());
        return found;
    }

    // What the client is told by its user's settings.
    void WriteSettings(std::string_view text) const
    {
        WriteBytes(home_ / u".hgrc", text);
    }

    const MercurialRepository repository_;
    const TempFolder home_;
    const EnvironmentValue homeVariable_{"HOME", home_.Path().c_str()};
};

TEST_F(Mercurial, ListsTheRevisionsOfAFileNewestFirst)
{
    repository_.Commit(u"a.txt", "one", "first", "-d '1234567890 -3600'");
    repository_.Commit(u"b.txt", "other", "not this one");
    repository_.Commit(u"a.txt", "two", "second", "-d '1234567890 7200'");
    const auto list = Revisions(Address(u"a.txt"));
    ASSERT_EQ(list.size(), 3U);
    EXPECT_EQ(list[0].description, u"Working Copy");
    EXPECT_EQ(list[0].uri, repository_ / u"a.txt");
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
    repository_.Commit(u"a.txt", "one", "first");
    EXPECT_EQ(Revisions(repository_ / u"a.txt").size(), 2U);
    EXPECT_EQ(Revisions(Address(u"a.txt", "abc")).size(), 2U);
}

TEST_F(Mercurial, WithoutARevisionTheWorkingFoldersParentIsMeant)
{
    const std::string first = repository_.Commit(u"a.txt", "first", "first");
    repository_.Commit(u"a.txt", "second", "second");
    WriteBytes(repository_ / u"a.txt", "changed");
    EXPECT_EQ(Content(Address(u"a.txt")), "second");
    repository_.Hg("update -q -C -r " + first);
    EXPECT_EQ(Content(Address(u"a.txt")), "first");
}

TEST_F(Mercurial, NamesWithBlanksAndOtherLetters)
{
    for (const char16_t* name : {u"a b.txt", u"\u00e4\u65e5\u672c.txt", u"sub dir/d\u00e9ep/x.txt"})
    {
        const std::string number =
            repository_.Commit(name, "bytes", "subject", "-u '\xC3\x9Cml\xC3\xA4ut'");
        const auto list = Revisions(Address(name));
        ASSERT_EQ(list.size(), 2U);
        EXPECT_EQ(list[1].author, u"\u00dcml\u00e4ut");
        EXPECT_EQ(Content(Address(name, number)), "bytes");
    }
}

TEST_F(Mercurial, ContentIsByteForByte)
{
    const std::string binary("\0\r\n\xFF\x1A\0end", 9);
    const std::string number = repository_.Commit(u"bin", binary, "binary");
    const std::string empty = repository_.Commit(u"bin", "", "emptied");
    EXPECT_EQ(Content(Address(u"bin", number)), binary);
    EXPECT_EQ(Content(Address(u"bin", empty)), "");
}

TEST_F(Mercurial, DescriptionsKeepTheirLines)
{
    repository_.Commit(u"a.txt", "1", "one\ntwo\n  three");
    repository_.Commit(u"a.txt", "2", "a\tb\n\tindented");
    repository_.Commit(u"a.txt", "3", "!\n!");
    EXPECT_THAT(Descriptions(u"a.txt"),
                testing::ElementsAre(u"!\n!", u"a\tb\nindented", u"one\ntwo\nthree"));
}

TEST_F(Mercurial, AnEmptyLineInADescriptionEndsTheList)
{
    repository_.Commit(u"a.txt", "1", "oldest");
    repository_.Commit(u"a.txt", "2", "one paragraph\n\nand another");
    repository_.Commit(u"a.txt", "3", "newest");
    EXPECT_THAT(Descriptions(u"a.txt"), testing::ElementsAre(u"newest"));
}

TEST_F(Mercurial, RenamedFilesListWhatCameSince)
{
    repository_.Commit(u"old.txt", "bytes", "first");
    repository_.Hg("rename old.txt new.txt");
    repository_.Hg("commit -u Ann -m renamed");
    EXPECT_THAT(Descriptions(u"new.txt"), testing::ElementsAre(u"renamed"));
}

TEST_F(Mercurial, ADeletedFileListsItsRevisions)
{
    const std::string number = repository_.Commit(u"gone.txt", "bytes", "first");
    repository_.Hg("remove gone.txt");
    repository_.Hg("commit -u Ann -m removed");
    EXPECT_THAT(Descriptions(u"gone.txt"), testing::ElementsAre(u"first"));
    EXPECT_EQ(Content(Address(u"gone.txt", number)), "bytes");
}

TEST_F(Mercurial, AllHeadsAreListed)
{
    repository_.Commit(u"a.txt", "base", "base");
    repository_.Commit(u"a.txt", "left", "left");
    repository_.Hg("update -q -C -r 0");
    repository_.Commit(u"a.txt", "right", "right");
    EXPECT_EQ(repository_.Hg("heads -T '{rev} '"), "2 1 ");
    EXPECT_THAT(Descriptions(u"a.txt"), testing::ElementsAre(u"right", u"left", u"base"));
    EXPECT_EQ(Content(Address(u"a.txt", "1")), "left");
}

TEST_F(Mercurial, AFolderHasNoHistory)
{
    repository_.Commit(u"sub/a.txt", "1", "first");
    EXPECT_FALSE(HasRevisions(Address(u"sub")));
    EXPECT_TRUE(Revisions(Address(u"sub")).empty());
}

TEST_F(Mercurial, WithoutHistoryThereIsNoWorkingCopyEither)
{
    repository_.Commit(u"a.txt", "1", "first");
    WriteBytes(repository_ / u"untracked.txt", "x");
    EXPECT_TRUE(Revisions(Address(u"untracked.txt")).empty());
    const TempFolder outside;
    WriteBytes(outside / u"a.txt", "x");
    EXPECT_FALSE(HasRevisions(u"hg://" + (outside / u"a.txt")));
}

TEST_F(Mercurial, ErrorTextFailsTheOpening)
{
    repository_.Commit(u"a.txt", "1", "first");
    const std::u16string address = Address(u"a.txt", "99");
    const Outcome outcome = FailedOpen(address);
    EXPECT_EQ(outcome.status, E_FAIL);
    ASSERT_TRUE(outcome.error);
    EXPECT_TRUE(outcome.error->text.starts_with(u"An error occurred while accessing \"" + address +
                                                u"\"\n\nabort: unknown revision '99'"))
        << fs::path(outcome.error->text);
    EXPECT_NE(outcome.error->text.find(u" [hgobjects@"), std::u16string::npos);
}

TEST_F(Mercurial, ABrokenExtensionsWarningFailsTheOpening)
{
    repository_.Commit(u"a.txt", "1", "first");
    WriteSettings("[extensions]\nbroken = /nowhere/broken.py\n");
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
    repository_.Commit(u"a.txt", "1", "first");
    WriteSettings("[alias]\nlog = log --limit 0\n");
    EXPECT_EQ(Revisions(Address(u"a.txt")).size(), 0U);
    const EnvironmentValue plain("HGPLAIN", "1");
    EXPECT_EQ(Revisions(Address(u"a.txt")).size(), 2U);
}

TEST_F(Mercurial, InAForeignLocaleTheEncodingHasToBeTold)
{
    repository_.Commit(u"a.txt", "1", "first", "-u '\xC3\x9Cml\xC3\xA4ut'");
    const EnvironmentValue locale("LC_ALL", "en_US.ISO-8859-1");
    const EnvironmentValue coercion("PYTHONCOERCECLOCALE", "0");
    const EnvironmentValue mode("PYTHONUTF8", "0");
    const auto foreign = Revisions(Address(u"a.txt"));
    ASSERT_EQ(foreign.size(), 2U);
    EXPECT_NE(foreign[1].author, u"\u00dcml\u00e4ut");
    const EnvironmentValue encoding("HGENCODING", "utf-8");
    const auto told = Revisions(Address(u"a.txt"));
    ASSERT_EQ(told.size(), 2U);
    EXPECT_EQ(told[1].author, u"\u00dcml\u00e4ut");
}

TEST_F(Mercurial, AMissingClientIsNamed)
{
    repository_.Commit(u"a.txt", "1", "first");
    const EnvironmentValue path("PATH", "/nonexistent");
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
            OutcomeOf([&] { return system_->GetFile(Ole(address), VARIANT_FALSE, file.Out()); });
        EXPECT_EQ(outcome.status, E_INVALIDARG);
        ASSERT_TRUE(outcome.error);
        EXPECT_TRUE(outcome.error->text.starts_with(u"Invalid Mercurial URI \"" +
                                                    std::u16string(address) + u"\"."))
            << fs::path(outcome.error->text);
    }
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
        [&] { return system_->GetFolder(Ole(Address(u"sub")), VARIANT_FALSE, folder.Out()); });
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

// A client that notes what it is given.
class MercurialClient : public Mercurial
{
protected:
    MercurialClient()
    {
        const std::u16string program = clients_ / u"hg";
        WriteBytes(program, "#!/bin/sh\n"
                            "printf '%s\\0' \"$@\" >\"$NOTES/arguments\"\n"
                            "pwd >\"$NOTES/folder\"\n"
                            "env >\"$NOTES/environment\"\n");
        chmod(fs::path(program).c_str(), 0755);
    }

    std::string Note(std::u16string_view name) const
    {
        return ReadBytes(clients_ / name);
    }

    const TempFolder clients_;
    const EnvironmentValue notes_{"NOTES", clients_.Path().c_str()};
    const EnvironmentValue path_{"PATH",
                                 (clients_.Path().string() + ":" + std::getenv("PATH")).c_str()};
};

TEST_F(MercurialClient, GetsLineFeedsAndTabsThemselves)
{
    Revisions(u"hg:///r/a b.txt#3");
    const std::string_view expected("log\0--template\0"
                                    "{rev}\n{author}\n{date}\n\t{desc|tabindent}\n!\n\0"
                                    "/r/a b.txt\0",
                                    sizeof "log --template {rev}\n{author}\n{date}\n\t"
                                           "{desc|tabindent}\n!\n /r/a b.txt");
    EXPECT_EQ(Note(u"arguments"), expected);
    EXPECT_EQ(Note(u"folder"), "/\n");
}

TEST_F(MercurialClient, GetsTheWholeEnvironment)
{
    const EnvironmentValue git("GIT_DIR", "/g");
    const EnvironmentValue mercurial("HG_ANYTHING", "h");
    Revisions(u"hg:///r/a.txt");
    EXPECT_THAT(Note(u"environment"), testing::AllOf(testing::HasSubstr("GIT_DIR=/g\n"),
                                                     testing::HasSubstr("HG_ANYTHING=h\n")));
}

TEST_F(MercurialClient, GetsTheRevisionForTheContent)
{
    Content(u"hg:///r/a.txt#12");
    EXPECT_EQ(Note(u"arguments"), std::string("cat\0-r\0"
                                              "12\0/r/a.txt\0",
                                              19));
    Content(u"hg:///r/a.txt");
    EXPECT_EQ(Note(u"arguments"), std::string("cat\0/r/a.txt\0", 13));
}

TEST_F(MercurialClient, IsNotAskedForTheHistoryOfAFolder)
{
    Revisions(u"hg:///");
    EXPECT_FALSE(fs::exists(clients_.Path() / "arguments"));
}

} // namespace
} // namespace tarnwell::test
