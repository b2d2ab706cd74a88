// The Git file system of the finished module on real repositories.
#include "module/localtest.h"
#include "support/posix/repository.h"

#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;
using testing::HasSubstr;

struct Revision
{
    std::u16string id, description, author, uri;
    std::uint64_t time = 0;
};

std::u16string Widened(const std::string& ascii)
{
    return {ascii.begin(), ascii.end()};
}

class Git : public testing::Test
{
protected:
    std::vector<Revision> Revisions(const std::u16string& address) const
    {
        ComPtr<IRevisions> revisions;
        EXPECT_EQ(
            system_.As<IFileSystemRevisions>()->GetRevisions(Ole(address), 0, revisions.Out()),
            S_OK);
        std::uint32_t count = 0;
        revisions->GetCount(&count);
        std::vector<Revision> list;
        for (std::uint32_t i = 0; i < count; ++i)
        {
            ComPtr<IRevision> revision;
            revisions->GetItem(static_cast<std::int32_t>(i), revision.Out());
            Bstr id, description, author, uri;
            Revision found;
            revision->GetRevisionId(id.Out());
            revision->GetDescription(description.Out());
            revision->GetAuthor(author.Out());
            revision->GetUri(uri.Out());
            revision->GetRevisionTime(&found.time);
            found.id = id.View();
            found.description = description.View();
            found.author = author.View();
            found.uri = uri.View();
            list.push_back(found);
        }
        return list;
    }

    bool HasRevisions(const std::u16string& address) const
    {
        VARIANT_BOOL has = 77;
        EXPECT_EQ(system_.As<IFileSystemRevisions>()->HasRevisions(Ole(address), 0, &has), S_OK);
        EXPECT_TRUE(has == VARIANT_TRUE || has == VARIANT_FALSE);
        return has != VARIANT_FALSE;
    }

    ComPtr<IFile> File(const std::u16string& address) const
    {
        ComPtr<IFile> file;
        EXPECT_THAT(
            OutcomeOf([&] { return system_->GetFile(Ole(address), VARIANT_FALSE, file.Out()); }),
            Succeeded());
        return file;
    }

    Outcome Open(const std::u16string& address, ComPtr<IFileStream>& stream) const
    {
        const auto file = File(address);
        return OutcomeOf([&] { return file->Open(readAccess, openExisting, stream.Out()); });
    }

    std::string Content(const std::u16string& address) const
    {
        ComPtr<IFileStream> stream;
        EXPECT_THAT(Open(address, stream), Succeeded());
        return stream ? ReadAll(stream) : "failed";
    }

    std::u16string Address(std::u16string_view name, const std::string& revision = {}) const
    {
        const std::u16string path = u"git://" + (repository_ / name);
        return revision.empty() ? path : path + u"#" + Widened(revision);
    }

    const Repository repository_;
    const ComPtr<IFileSystem> system_ = TheModule().CreateFileSystem(CLSID_GITFileSystem);
};

TEST_F(Git, ListsTheRevisionsOfAFileNewestFirst)
{
    const std::string first = repository_.Commit(u"a.txt", "one", "first");
    repository_.Commit(u"b.txt", "other", "not this one");
    const std::string second = repository_.Commit(u"a.txt", "two", "second", "Bob");
    const auto list = Revisions(Address(u"a.txt"));
    ASSERT_EQ(list.size(), 3U);
    EXPECT_EQ(list[0].description, u"Working Copy");
    EXPECT_EQ(list[0].uri, repository_ / u"a.txt");
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
    repository_.Commit(u"a.txt", "one", "first");
    EXPECT_EQ(Revisions(repository_ / u"a.txt").size(), 2U);
    EXPECT_EQ(Revisions(Address(u"a.txt", "abc")).size(), 2U);
}

TEST_F(Git, WithoutARevisionTheLatestCommitIsMeant)
{
    repository_.Commit(u"a.txt", "committed", "first");
    WriteBytes(repository_ / u"a.txt", "changed");
    EXPECT_EQ(Content(Address(u"a.txt")), "committed");
}

TEST_F(Git, NamesWithBlanksAndOtherLetters)
{
    for (const char16_t* name :
         {u"a b.txt", u"\u00e4\u65e5\u672c.txt", u"\U0001F600.txt", u"sub dir/d\u00e9ep/x.txt"})
    {
        const std::string hash =
            repository_.Commit(name, "bytes", "subject", "\xC3\x9Cml\xC3\xA4ut");
        const auto list = Revisions(Address(name));
        ASSERT_EQ(list.size(), 2U);
        EXPECT_EQ(list[1].author, u"\u00dcml\u00e4ut");
        EXPECT_EQ(Content(Address(name, hash)), "bytes");
    }
}

TEST_F(Git, AMarkerInAFoldersNameDoesNoHarmInFrontOfARevision)
{
    const std::string hash = repository_.Commit(u"x#y/a.txt", "bytes", "subject");
    EXPECT_EQ(Content(Address(u"x#y/a.txt", hash)), "bytes");
}

TEST_F(Git, ContentIsByteForByte)
{
    const std::string binary("\0\r\n\xFF\x1A\0end", 9);
    const std::string hash = repository_.Commit(u"bin", binary, "binary");
    const std::string empty = repository_.Commit(u"bin", "", "emptied");
    EXPECT_EQ(Content(Address(u"bin", hash)), binary);
    EXPECT_EQ(Content(Address(u"bin", empty)), "");
}

TEST_F(Git, SubjectsMayBeEmptyOrTheClosingMark)
{
    repository_.Commit(u"a.txt", "1", "");
    repository_.Commit(u"a.txt", "2", "!");
    const auto list = Revisions(Address(u"a.txt"));
    ASSERT_EQ(list.size(), 3U);
    EXPECT_EQ(list[1].description, u"!");
    EXPECT_EQ(list[2].description, u"");
}

TEST_F(Git, AnEmptyAuthorNameEndsTheList)
{
    repository_.Commit(u"a.txt", "1", "oldest");
    repository_.Git("-c user.name=x commit -q --allow-empty -m filler");
    WriteBytes(repository_ / u"a.txt", "2");
    repository_.Git("add -A");
    const std::string tree = repository_.Git("write-tree");
    const std::string parent = repository_.Git("rev-parse HEAD");
    WriteBytes(repository_ / u"raw", "tree " + tree + "\nparent " + parent +
                                         "\nauthor  <a@b> 1000000000 +0000\n"
                                         "committer C <a@b> 1000000000 +0000\n\nnameless\n");
    const std::string nameless = repository_.Git("hash-object -t commit -w raw");
    repository_.Git("reset -q --soft " + nameless);
    repository_.Commit(u"a.txt", "3", "newest");
    const auto list = Revisions(Address(u"a.txt"));
    ASSERT_EQ(list.size(), 2U);
    EXPECT_EQ(list[1].description, u"newest");
}

TEST_F(Git, ARenamedFileListsWhatCameSince)
{
    repository_.Commit(u"old.txt", "bytes of a file", "first");
    repository_.Git("mv old.txt new.txt");
    repository_.Git("commit -q -m renamed");
    EXPECT_EQ(Revisions(Address(u"new.txt")).size(), 2U);
}

TEST_F(Git, ADeletedFileListsNothingAndOpensByItsHash)
{
    const std::string hash = repository_.Commit(u"gone.txt", "bytes", "first");
    repository_.Git("rm -q gone.txt");
    repository_.Git("commit -q -m removed");
    EXPECT_TRUE(Revisions(Address(u"gone.txt")).empty());
    EXPECT_EQ(Content(Address(u"gone.txt", hash)), "bytes");
}

TEST_F(Git, MergesAreRevisions)
{
    repository_.Commit(u"a.txt", "1\n2\n3\n4\n5\n", "base");
    repository_.Git("checkout -q -b side");
    repository_.Commit(u"a.txt", "side\n2\n3\n4\n5\n", "on the side");
    repository_.Git("checkout -q main");
    repository_.Commit(u"a.txt", "1\n2\n3\n4\nmain\n", "on main");
    repository_.Git("merge -q -m merged side");
    EXPECT_EQ(Revisions(Address(u"a.txt")).size(), 5U);
}

TEST_F(Git, AFolderHasNoHistoryAndNeedsNoClient)
{
    repository_.Commit(u"sub/a.txt", "1", "first");
    EXPECT_FALSE(HasRevisions(Address(u"sub")));
    EXPECT_TRUE(Revisions(Address(u"sub")).empty());
}

TEST_F(Git, WithoutHistoryThereIsNoWorkingCopyEither)
{
    repository_.Commit(u"a.txt", "1", "first");
    WriteBytes(repository_ / u"untracked.txt", "x");
    EXPECT_TRUE(Revisions(Address(u"untracked.txt")).empty());
    const TempFolder outside;
    WriteBytes(outside / u"a.txt", "x");
    EXPECT_FALSE(HasRevisions(u"git://" + (outside / u"a.txt")));
}

TEST_F(Git, ErrorTextFailsTheOpening)
{
    repository_.Commit(u"a.txt", "1", "first");
    ComPtr<IFileStream> stream;
    const std::u16string address = Address(u"none.txt");
    const Outcome outcome = Open(address, stream);
    EXPECT_EQ(outcome.status, E_FAIL);
    ASSERT_TRUE(outcome.error);
    EXPECT_TRUE(outcome.error->text.starts_with(
        u"An error occurred while accessing \"" + address +
        u"\"\n\nfatal: path 'none.txt' does not exist in 'HEAD' [gitobjects@"));
    EXPECT_FALSE(stream);
}

TEST_F(Git, ALinkedRepositoryListsAndDoesNotOpen)
{
    repository_.Commit(u"a.txt", "1", "first");
    const TempFolder other;
    const std::u16string linked = other / u"linked";
    repository_.Git("worktree add -q " + fs::path(linked).string());
    EXPECT_EQ(Revisions(Joined(linked, u"a.txt")).size(), 2U);
    ComPtr<IFileStream> stream;
    EXPECT_LT(Open(u"git://" + Joined(linked, u"a.txt"), stream).status, 0);
}

TEST_F(Git, VariablesOfTheHostDoNotReachTheClient)
{
    repository_.Commit(u"a.txt", "1", "first");
    setenv("GIT_DIR", "/nowhere", 1);
    setenv("git_dir", "/nowhere", 1);
    EXPECT_EQ(Revisions(Address(u"a.txt")).size(), 2U);
    EXPECT_EQ(Content(Address(u"a.txt")), "1");
    unsetenv("GIT_DIR");
    unsetenv("git_dir");
}

TEST_F(Git, AMissingClientIsNamed)
{
    repository_.Commit(u"a.txt", "1", "first");
    const std::string path = getenv("PATH");
    setenv("PATH", "/nonexistent", 1);
    ComPtr<IFileStream> stream;
    const Outcome outcome = Open(Address(u"a.txt"), stream);
    const bool has = HasRevisions(Address(u"a.txt"));
    const std::size_t listed = Revisions(Address(u"a.txt")).size();
    setenv("PATH", path.c_str(), 1);
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
    const Outcome noFolder = OutcomeOf(
        [&] {
            return system_->GetFolder(Ole(repository_.Folder().Text()), VARIANT_FALSE,
                                      folder.Out());
        });
    EXPECT_EQ(noFolder.status, E_NOTIMPL);
    EXPECT_TRUE(noFolder.error->text.starts_with(u"Failed to create a support object. "));
    const auto item = File(Address(u"a.txt", "12")).As<IFileSystemItem>();
    std::uint32_t attributes = 0;
    EXPECT_EQ(item->GetAttributes(&attributes), E_NOTIMPL);
    ComPtr<IFile> file;
    EXPECT_EQ(system_->GetFile(Ole(Address(u"a.txt")), VARIANT_TRUE, file.Out()), E_NOTIMPL);
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
    const std::string hash = repository_.Commit(u"a.txt", "bytes", "first");
    const TempFolder temporary;
    setenv("TMPDIR", temporary.Path().c_str(), 1);
    ComPtr<IFileStream> stream;
    EXPECT_THAT(Open(Address(u"a.txt", hash), stream), Succeeded());
    EXPECT_TRUE(fs::is_empty(temporary.Path()));
    unsetenv("TMPDIR");
    EXPECT_EQ(ReadAll(stream), "bytes");
    EXPECT_EQ(stream->Close(), S_OK);
    EXPECT_EQ(stream->Close(), S_OK);
    char byte = 0;
    ULONG count = 7;
    EXPECT_EQ(stream.As<::ISequentialStream>()->Read(&byte, 1, &count), Win32Status(6));
    EXPECT_EQ(count, 0U);
}

TEST_F(Git, AddressesAreCombinedAsText)
{
    for (const auto& [base, relative, expected] :
         {std::tuple{u"x", u"/a", u"x/a"}, std::tuple{u"x", u"//a", u"x//a"},
          std::tuple{u"git:///r/", u"a", u"git:///r/a"}})
    {
        Bstr result;
        EXPECT_EQ(system_->CombinePath(base, relative, result.Out()), S_OK);
        EXPECT_EQ(result.View(), expected);
    }
    std::uint32_t mask = 0;
    EXPECT_EQ(system_->GetOperationMask(0, nullptr, &mask), S_OK);
    EXPECT_EQ(mask, 5U);
    EXPECT_EQ(system_->GetOperationMask(2, nullptr, &mask), S_OK);
    EXPECT_EQ(mask, 65535U);
}

} // namespace
} // namespace tarnwell::test
