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

TEST_F(Git, ANegativeNumberIsNoRevision)
{
    repository.Commit(u"a.txt", "1", "first");
    EXPECT_EQ(FailedOpen(Address(u"a.txt", "-1")).status, E_INVALIDARG);
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

} // namespace
} // namespace tarnwell::test
