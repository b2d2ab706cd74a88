// The Git file system of the finished module on real repositories.
#include "module/gittest.h"
#include "support/environmentvalue.h"

#include <tarnwell/text.h>

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;

// A folder that is none or missing.
constexpr HRESULT noFolder = Win32Status(267);
constexpr const char16_t* noCommunication = u"An error occurred while communicating with Git.";

TEST_F(Git, ListsTheRevisionsOfAFileNewestFirst)
{
    const std::string first = repository.Commit(u"a.txt", "one", "first");
    repository.Commit(u"b.txt", "other", "not this one");
    const std::string second = repository.Commit(u"a.txt", "two", "second", "Bob");
    const auto list = Revisions(Address(u"a.txt"));
    ASSERT_EQ(list.size(), 3U);
    EXPECT_EQ(list[0].description, u"Working Copy");
    EXPECT_EQ(list[0].uri, repository / u"a.txt");
    EXPECT_EQ(list[1].id, Widened(second));
    EXPECT_EQ(list[1].author, u"Bob");
    EXPECT_EQ(list[1].description, u"second");
    EXPECT_EQ(list[2].id, Widened(first));
    EXPECT_GT(list[2].time, 116444736000000000U);
    EXPECT_EQ(Content(list[1].uri), "two");
    EXPECT_EQ(Content(list[2].uri), "one");
    EXPECT_TRUE(HasRevisions(Address(u"a.txt")));
}

TEST_F(Git, PathsAndAddressesAreAskedAlike)
{
    repository.Commit(u"a.txt", "one", "first");
    EXPECT_EQ(Revisions(repository / u"a.txt").size(), 2U);
    EXPECT_EQ(Revisions(Address(u"a.txt", "abc")).size(), 2U);
}

TEST_F(Git, WithoutARevisionTheLatestCommitIsMeant)
{
    repository.Commit(u"a.txt", "committed", "first");
    WriteBytes(repository / u"a.txt", "changed");
    EXPECT_EQ(Content(Address(u"a.txt")), "committed");
}

TEST_F(Git, NamesWithBlanksAndOtherLetters)
{
    for (const char16_t* name :
         {u"a b.txt", u"\u00e4\u65e5\u672c.txt", u"\U0001F600.txt", u"sub dir/d\u00e9ep/x.txt"})
    {
        const std::string hash =
            repository.Commit(name, "bytes", "subject", "\xC3\x9Cml\xC3\xA4ut");
        const auto list = Revisions(Address(name));
        ASSERT_EQ(list.size(), 2U);
        EXPECT_EQ(list[1].author, u"\u00dcml\u00e4ut");
        EXPECT_EQ(Content(Address(name, hash)), "bytes");
    }
}

TEST_F(Git, AMarkerInAFoldersNameDoesNoHarmInFrontOfARevision)
{
    const std::string hash = repository.Commit(u"x#y/a.txt", "bytes", "subject");
    const std::u16string address = Address(u"x#y/a.txt", hash);
    EXPECT_EQ(Content(address), "bytes");
    const auto list = Revisions(address);
    ASSERT_EQ(list.size(), 2U);
    EXPECT_EQ(list[0].uri, repository / u"x#y/a.txt");
    EXPECT_EQ(list[1].uri, address);
    EXPECT_TRUE(Revisions(Address(u"x#y/a.txt")).empty());
}

// The client takes the path for a pattern, too.
TEST_F(Git, ANameInBracketsAlsoListsWhatItMatches)
{
    repository.Commit(u"a1.txt", "1", "matched");
    repository.Commit(u"a[1].txt", "2", "meant");
    const auto list = Revisions(Address(u"a[1].txt"));
    ASSERT_EQ(list.size(), 3U);
    EXPECT_EQ(list[1].description, u"meant");
    EXPECT_EQ(list[2].description, u"matched");
    EXPECT_EQ(Content(Address(u"a[1].txt")), "2");
}

TEST_F(Git, AFoldersContentIsWhatTheClientSaysOfIt)
{
    repository.Commit(u"sub/a.txt", "1", "first");
    EXPECT_EQ(Content(Address(u"sub")), "tree HEAD:sub\n\na.txt\n");
}

TEST_F(Git, ContentIsByteForByte)
{
    const std::string binary("\0\r\n\xFF\x1A\0end", 9);
    const std::string hash = repository.Commit(u"bin", binary, "binary");
    const std::string empty = repository.Commit(u"bin", "", "emptied");
    EXPECT_EQ(Content(Address(u"bin", hash)), binary);
    EXPECT_EQ(Content(Address(u"bin", empty)), "");
}

TEST_F(Git, SubjectsMayBeEmptyOrTheClosingMark)
{
    repository.Commit(u"a.txt", "1", "");
    repository.Commit(u"a.txt", "2", "!");
    const auto list = Revisions(Address(u"a.txt"));
    ASSERT_EQ(list.size(), 3U);
    EXPECT_EQ(list[1].description, u"!");
    EXPECT_EQ(list[2].description, u"");
}

TEST_F(Git, AnEmptyAuthorNameEndsTheList)
{
    repository.Commit(u"a.txt", "1", "oldest");
    repository.Git("-c user.name=x commit -q --allow-empty -m filler");
    WriteBytes(repository / u"a.txt", "2");
    repository.Git("add -A");
    const std::string tree = repository.Git("write-tree");
    const std::string parent = repository.Git("rev-parse HEAD");
    WriteBytes(repository / u"raw", "tree " + tree + "\nparent " + parent +
                                        "\nauthor  <a@b> 1000000000 +0000\n"
                                        "committer C <a@b> 1000000000 +0000\n\nnameless\n");
    const std::string nameless = repository.Git("hash-object -t commit -w raw");
    repository.Git("reset -q --soft " + nameless);
    repository.Commit(u"a.txt", "3", "newest");
    const auto list = Revisions(Address(u"a.txt"));
    ASSERT_EQ(list.size(), 2U);
    EXPECT_EQ(list[1].description, u"newest");
}

TEST_F(Git, ARenamedFileListsWhatCameSince)
{
    repository.Commit(u"old.txt", "bytes of a file", "first");
    repository.Git("mv old.txt new.txt");
    repository.Git("commit -q -m renamed");
    EXPECT_EQ(Revisions(Address(u"new.txt")).size(), 2U);
}

TEST_F(Git, ADeletedFileListsNothingAndOpensByItsHash)
{
    const std::string hash = repository.Commit(u"gone.txt", "bytes", "first");
    repository.Git("rm -q gone.txt");
    repository.Git("commit -q -m removed");
    EXPECT_TRUE(Revisions(Address(u"gone.txt")).empty());
    EXPECT_EQ(Content(Address(u"gone.txt", hash)), "bytes");
}

TEST_F(Git, MergesAreRevisions)
{
    repository.Commit(u"a.txt", "1\n2\n3\n4\n5\n", "base");
    repository.Git("checkout -q -b side");
    repository.Commit(u"a.txt", "side\n2\n3\n4\n5\n", "on the side");
    repository.Git("checkout -q main");
    repository.Commit(u"a.txt", "1\n2\n3\n4\nmain\n", "on main");
    repository.Git("merge -q -m merged side");
    EXPECT_EQ(Revisions(Address(u"a.txt")).size(), 5U);
}

TEST_F(Git, AFolderHasNoHistoryAndNeedsNoClient)
{
    repository.Commit(u"sub/a.txt", "1", "first");
    EXPECT_FALSE(HasRevisions(Address(u"sub")));
    EXPECT_TRUE(Revisions(Address(u"sub")).empty());
}

TEST_F(Git, WithoutHistoryThereIsNoWorkingCopyEither)
{
    repository.Commit(u"a.txt", "1", "first");
    WriteBytes(repository / u"untracked.txt", "x");
    EXPECT_TRUE(Revisions(Address(u"untracked.txt")).empty());
    const TempFolder outside;
    WriteBytes(outside / u"a.txt", "x");
    EXPECT_FALSE(HasRevisions(u"git://" + (outside / u"a.txt")));
}

TEST_F(Git, ErrorTextFailsTheOpening)
{
    repository.Commit(u"a.txt", "1", "first");
    ComPtr<IFileStream> stream;
    const std::u16string address = Address(u"none.txt");
    const Outcome outcome = Open(address, stream);
    EXPECT_EQ(outcome.status, E_FAIL);
    ASSERT_TRUE(outcome.error);
    EXPECT_TRUE(
        WithLineFeeds(outcome.error->text)
            .starts_with(u"An error occurred while accessing \"" + address +
                         u"\"\n\nfatal: path 'none.txt' does not exist in 'HEAD' [gitobjects@"));
    EXPECT_FALSE(stream);
}

TEST_F(Git, ALinkedRepositoryListsAndDoesNotOpen)
{
    repository.Commit(u"a.txt", "1", "first");
    const TempFolder other;
    const std::u16string linked = other / u"linked";
    repository.Run({"worktree", "add", "-q", EncodeName(linked).value()});
    EXPECT_EQ(Revisions(Joined(linked, u"a.txt")).size(), 2U);
    EXPECT_THAT(FailedOpen(u"git://" + Joined(linked, u"a.txt")),
                Failed(noFolder, noCommunication));
}

TEST_F(Git, OutsideARepositoryThereIsNoFolderToOpenIn)
{
    const TempFolder outside;
    WriteBytes(outside / u"a.txt", "x");
    EXPECT_THAT(FailedOpen(u"git://" + (outside / u"a.txt")), Failed(noFolder, noCommunication));
}

TEST_F(Git, RelativePathsDoNotOpenNorList)
{
    repository.Commit(u"a.txt", "1", "first");
    const CurrentFolder inside(repository.Folder().Path());
    EXPECT_THAT(FailedOpen(u"git://a.txt"), Failed(noFolder, noCommunication));
    EXPECT_TRUE(Revisions(u"git://a.txt").empty());
    EXPECT_TRUE(Revisions(u"a.txt").empty());
}

TEST_F(Git, WhatTheClientWouldReadAsAnOptionIsRefusedBeforeItStarts)
{
    repository.Commit(u"a.txt", "1", "first");
    const std::u16string file = u"git://" + (repository / u"a.txt");
    const EnvironmentValue path("PATH", "nowhere");
    for (const std::u16string& address :
         {file + u"#--output=x", file + u"#-p", file + u"#-1", file + u"#-",
          std::u16string(u"git://--output=x/a.txt"), std::u16string(u"git://-p/a.txt#HEAD")})
    {
        const Outcome outcome = FailedOpen(address);
        EXPECT_EQ(outcome.status, E_INVALIDARG);
        ASSERT_TRUE(outcome.error);
        EXPECT_TRUE(outcome.error->text.starts_with(u"Invalid Git URI \"" + address + u"\"."))
            << std::filesystem::path(outcome.error->text);
    }
    EXPECT_TRUE(Revisions(u"git://--output=x/a.txt").empty());
}

TEST_F(Git, VariablesOfTheHostDoNotReachTheClient)
{
    repository.Commit(u"a.txt", "1", "first");
    for (const char* const name : {"GIT_DIR", "git_dir", "Git_Dir"})
    {
        const EnvironmentValue hidden(name, "nowhere");
        EXPECT_EQ(Revisions(Address(u"a.txt")).size(), 2U);
        EXPECT_EQ(Content(Address(u"a.txt")), "1");
    }
}

TEST_F(Git, AMissingClientIsNamed)
{
    repository.Commit(u"a.txt", "1", "first");
    const EnvironmentValue path("PATH", "nowhere");
    ComPtr<IFileStream> stream;
    const Outcome outcome = Open(Address(u"a.txt"), stream);
    const bool has = HasRevisions(Address(u"a.txt"));
    const std::size_t listed = Revisions(Address(u"a.txt")).size();
    EXPECT_EQ(outcome.status, Win32Status(2));
    ASSERT_TRUE(outcome.error);
    EXPECT_TRUE(outcome.error->text.starts_with(
        u"Can't find the Git command line utility (git.exe). Please check that the Git client is "
        u"correctly installed. "));
    EXPECT_FALSE(has);
    EXPECT_EQ(listed, 0U);
}

TEST_F(Git, OpensExistingFilesForReadingOnly)
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
                                                    u"\" for reading or writing. [gitobjects@"));
    }
}

TEST_F(Git, HasNoFoldersAndTellsNoFacts)
{
    ComPtr<IFolder> folder;
    const Outcome noFolder = OutcomeOf([&] {
        return system->GetFolder(Ole(repository.Folder().Text()), VARIANT_FALSE, folder.Out());
    });
    EXPECT_EQ(noFolder.status, E_NOTIMPL);
    EXPECT_TRUE(noFolder.error->text.starts_with(u"Failed to create a support object. "));
    const auto item = File(Address(u"a.txt", "12")).As<IFileSystemItem>();
    std::uint32_t attributes = 0;
    EXPECT_EQ(item->GetAttributes(&attributes), E_NOTIMPL);
    ComPtr<IFile> file;
    EXPECT_EQ(system->GetFile(Ole(Address(u"a.txt")), VARIANT_TRUE, file.Out()), E_NOTIMPL);
}

TEST_F(Git, ItemsTellTheirNamesWithAndWithoutTheRevision)
{
    const auto file = File(u"git:///r/sub/a.txt#12");
    const auto item = file.As<IFileSystemItem>();
    const auto comparable = file.As<IFileSystemItemComparableUrl>();
    Bstr name, parent, path, comparableName, url;
    item->GetName(name.Out());
    item->GetParentPath(parent.Out());
    item->GetPath(path.Out());
    comparable->GetComparableName(comparableName.Out());
    comparable->GetComparableUrl(url.Out());
    EXPECT_EQ(name.View(), u"a.txt#12");
    EXPECT_EQ(parent.View(), u"git:///r/sub");
    EXPECT_EQ(path.View(), u"git:///r/sub/a.txt#12");
    EXPECT_EQ(comparableName.View(), u"a.txt");
    EXPECT_EQ(url.View(), u"git:///r/sub/a.txt");
}

TEST_F(Git, StreamsOutliveTheirItemAndLeaveNoFile)
{
    const std::string hash = repository.Commit(u"a.txt", "bytes", "first");
    const TempFolder temporary;
    const EnvironmentValue variable(temporaryFolderVariable, temporary.Path().string().c_str());
    ComPtr<IFileStream> stream;
    EXPECT_THAT(Open(Address(u"a.txt", hash), stream), Succeeded());
    EXPECT_EQ(ReadAll(stream), "bytes");
    EXPECT_EQ(stream->Close(), S_OK);
    EXPECT_TRUE(fs::is_empty(temporary.Path()));
    EXPECT_EQ(stream->Close(), S_OK);
    char byte = 0;
    ULONG count = 7;
    EXPECT_EQ(stream.As<::ISequentialStream>()->Read(&byte, 1, &count), Win32Status(6));
    EXPECT_EQ(count, 0U);
}

TEST_F(Git, TheLastReferenceToAStreamLeavesNoFile)
{
    const std::string hash = repository.Commit(u"a.txt", "bytes", "first");
    const TempFolder temporary;
    const EnvironmentValue variable(temporaryFolderVariable, temporary.Path().string().c_str());
    ComPtr<IFileStream> stream;
    EXPECT_THAT(Open(Address(u"a.txt", hash), stream), Succeeded());
    stream.Reset();
    EXPECT_TRUE(fs::is_empty(temporary.Path()));
}

TEST_F(Git, AddressesAreCombinedAsText)
{
    for (const auto& [base, relative, expected] :
         {std::tuple{u"x", u"/a", u"x/a"}, std::tuple{u"x", u"//a", u"x//a"},
          std::tuple{u"git:///r/", u"a", u"git:///r/a"}})
    {
        Bstr result;
        EXPECT_EQ(system->CombinePath(Ole(base), Ole(relative), result.Out()), S_OK);
        EXPECT_EQ(result.View(), expected);
    }
    std::uint32_t mask = 0;
    EXPECT_EQ(system->GetOperationMask(0, nullptr, &mask), S_OK);
    EXPECT_EQ(mask, 5U);
    EXPECT_EQ(system->GetOperationMask(2, nullptr, &mask), S_OK);
    EXPECT_EQ(mask, 65535U);
}

} // namespace
} // namespace tarnwell::test
