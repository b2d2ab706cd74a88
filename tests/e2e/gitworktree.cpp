// A revision of a Git repository compared with a work tree whose files have another form.
#include "e2e/hostrun.h"
#include "support/clients.h"
#include "support/repository.h"

#include <tarnwell/text.h>

#include <gmock/gmock.h>

namespace tarnwell::test
{

namespace
{

using testing::ElementsAre;
using testing::StartsWith;

class GitWorkTree : public ClientTest
{
protected:
    // Line ends, keywords and an encoding, each recorded in another form.
    void Make() const
    {
        repository.Git("config core.autocrlf true");
        WriteBytes(repository / u".gitattributes",
                   "*.c ident\n*.ps1 text working-tree-encoding=UTF-16LE-BOM\n");
        WriteBytes(repository / u"ends.txt", "a\r\nb\r\n");
        WriteBytes(repository / u"keyword.c", "$Id: 1 $\n");
        WriteBytes(repository / u"wide.ps1", std::string("\xFF\xFE\x61\0", 4));
        repository.Commit(u"last", "1\n", "first");
    }
    std::u16string Folder() const
    {
        return repository.Folder().Text();
    }

    const Repository repository;
};

TEST_F(GitWorkTree, IsEqualWhereGitCallsItUnchanged)
{
    Make();
    const HostRun all = RunHost({u"compare", u"git:" + Folder() + u"#HEAD", Folder()});
    EXPECT_EQ(all.output, "5 equal\n") << all.errors;
    EXPECT_EQ(all.exitCode, 0);
    const HostRun file =
        RunHost({u"compare", repository / u"ends.txt", u"git:" + (repository / u"ends.txt")});
    EXPECT_EQ(file.output, "ends.txt: equal, 6 and 4 bytes\n") << file.errors;
    EXPECT_EQ(file.exitCode, 0);
    const HostRun changed =
        RunHost({u"compare", u"git:" + (repository / u"last"), repository / u"ends.txt"});
    EXPECT_EQ(changed.output, "last: different, 2 and 6 bytes, first difference at offset 0\n");
    EXPECT_EQ(changed.exitCode, 3);
}

TEST_F(GitWorkTree, DiffersWhereGitCallsItChanged)
{
    Make();
    WriteBytes(repository / u"ends.txt", "a\r\nc\r\n");
    WriteBytes(repository / u"keyword.c", "$Id: 1 $\nx");
    WriteBytes(repository / u"last", "2\n");
    const HostRun run = RunHost({u"compare", u"git:" + Folder(), Folder()});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_THAT(LinesOf(run.output),
                ElementsAre(StartsWith("ends.txt: different, 4 and 6 bytes"),
                            StartsWith("keyword.c: different, "),
                            StartsWith("last: different, 2 and 2 bytes, first difference at"),
                            "2 equal, 3 different"));
}

TEST_F(GitWorkTree, CountsWhereItsRepositoryIsTheOneThatIsCompared)
{
    Make();
    const TempFolder other;
    const std::u16string linked = other / u"linked";
    repository.Run({"worktree", "add", "-q", EncodeName(linked).value()});
    WriteBytes(Joined(linked, u"ends.txt"), "a\r\nb\r\n");
    EXPECT_EQ(RunHost({u"compare", u"git:" + Folder(), linked}).output, "5 equal\n");
    // Its files aren't what anybody would convert.
    const TempFolder copy;
    WriteBytes(copy / u"ends.txt", "a\r\nb\r\n");
    const HostRun run = RunHost({u"compare", u"git:" + Folder(), copy.Text()});
    EXPECT_EQ(LinesOf(run.output).at(1), "ends.txt: different, 4 and 6 bytes");
}

TEST_F(GitWorkTree, IsFoundFromTheCurrentFolderToo)
{
    Make();
    const HostRun folder = RunHost(
        {.arguments = {u"compare", u"git:.#HEAD", u"."}, .folder = repository.Folder().Path()});
    EXPECT_EQ(folder.output, "5 equal\n") << folder.errors;
    const HostRun file = RunHost({.arguments = {u"compare", u"git:ends.txt", u"ends.txt"},
                                  .folder = repository.Folder().Path()});
    EXPECT_EQ(file.output, "ends.txt: equal, 4 and 6 bytes\n") << file.errors;
}

} // namespace

} // namespace tarnwell::test
