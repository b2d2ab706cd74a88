// log, cat, stat and compare on revisions of a real repository.
#include "e2e/hostrun.h"
#include "e2e/json.h"
#include "support/clients.h"
#include "support/repository.h"

#include <gmock/gmock.h>

namespace tarnwell::test
{

namespace
{

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

class GitAddresses : public ClientTest
{
protected:
    std::u16string Address(const std::u16string& name, const std::string& revision = {}) const
    {
        const std::u16string path = u"git:" + (repository / name);
        return revision.empty() ? path
                                : path + u"#" + std::u16string(revision.begin(), revision.end());
    }

    const Repository repository;
};

TEST_F(GitAddresses, LogTellsTheRevisions)
{
    const std::string first = repository.Commit(u"a \u00e4.txt", "1", "the first");
    const std::string second =
        repository.Commit(u"a \u00e4.txt", "2", "the second \u65e5", "B\u00f6b");
    const HostRun run = RunHost({u"--json", u"log", Address(u"a \u00e4.txt")});
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.exitCode, 0);
    const std::vector<JsonLine> lines = JsonLinesOf(run.output);
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[0].Text("description"), "Working Copy");
    EXPECT_EQ(lines[0].Text("uri"), Utf8(repository / u"a \u00e4.txt"));
    EXPECT_EQ(lines[1].Text("id"), second);
    EXPECT_EQ(lines[1].Text("author"), "B\u00f6b");
    EXPECT_EQ(lines[1].Text("description"), "the second \u65e5");
    EXPECT_EQ(lines[1].Text("uri"), "git://" + Utf8(repository / u"a \u00e4.txt") + "#" + second);
    EXPECT_EQ(lines[2].Text("id"), first);
}

TEST_F(GitAddresses, LogIsReadable)
{
    const std::string hash = repository.Commit(u"a.txt", "1", "the first");
    const HostRun run = RunHost({u"log", Address(u"a.txt")});
    EXPECT_THAT(LinesOf(run.output),
                ElementsAre("  -  ", "    Working Copy", "    " + Utf8(repository / u"a.txt"),
                            testing::AllOf(StartsWith(hash + "  20"), EndsWith("  Ann")),
                            "    the first",
                            "    git://" + Utf8(repository / u"a.txt") + "#" + hash));
}

TEST_F(GitAddresses, LogOfAFileWithoutHistoryIsEmpty)
{
    WriteBytes(repository / u"a.txt", "1");
    const HostRun run = RunHost({u"log", Address(u"a.txt")});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.output + run.errors, "");
}

TEST_F(GitAddresses, CatPrintsARevisionByteForByte)
{
    const std::string bytes("\r\n\n\0\x1A\xFF", 6);
    const std::string hash = repository.Commit(u"a.txt", bytes, "first");
    repository.Commit(u"a.txt", "newer", "second");
    const HostRun run = RunHost({u"cat", Address(u"a.txt", hash)});
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.output, bytes);
}

TEST_F(GitAddresses, AddressesMayBeRelative)
{
    const std::string hash = repository.Commit(u"sub/a.txt", "old", "first");
    repository.Commit(u"sub/a.txt", "new", "second");
    const std::filesystem::path sub = repository.Folder().Path() / "sub";
    EXPECT_EQ(RunHost({.arguments = {u"cat", u"git:a.txt"}, .folder = sub}).output, "new");
    const std::u16string revision(hash.begin(), hash.end());
    for (const std::u16string& address :
         {u"git:a.txt#" + revision, u"git://a.txt#" + revision, u"git:../sub/a.txt#" + revision})
        EXPECT_EQ(RunHost({.arguments = {u"cat", address}, .folder = sub}).output, "old");
}

TEST_F(GitAddresses, CatFailsWithWhatTheClientSays)
{
    repository.Commit(u"a.txt", "1", "first");
    const HostRun run = RunHost({u"cat", Address(u"none.txt")});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.output, "");
    EXPECT_THAT(run.errors, HasSubstr("fatal: path 'none.txt' does not exist in 'HEAD'"));
    EXPECT_THAT(run.errors, EndsWith("\n0x80004005\n"));
}

TEST_F(GitAddresses, StatTellsWhatThereIs)
{
    const HostRun run = RunHost({u"--json", u"stat", Address(u"a.txt", "12")});
    EXPECT_EQ(run.exitCode, 0);
    const JsonLine item(LinesOf(run.output).at(0));
    EXPECT_EQ(item.Text("name"), "a.txt#12");
    EXPECT_EQ(item.Text("comparable_name"), "a.txt");
    EXPECT_EQ(item.Text("comparable_url"), "git://" + Utf8(repository / u"a.txt"));
    EXPECT_EQ(item.Raw("size"), "null");
    EXPECT_EQ(item.Raw("attributes"), "null");
}

TEST_F(GitAddresses, RevisionsAreCompared)
{
    const std::string old = repository.Commit(u"a.txt", "same start", "first");
    repository.Commit(u"a.txt", "same stop!", "second");
    const HostRun run = RunHost({u"compare", Address(u"a.txt", old), Address(u"a.txt")});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_EQ(run.output,
              "a.txt#" + old + ": different, 10 and 10 bytes, first difference at offset 7\n");
    EXPECT_EQ(RunHost({u"compare", Address(u"a.txt"), repository / u"a.txt"}).exitCode, 0);
}

} // namespace

} // namespace tarnwell::test
