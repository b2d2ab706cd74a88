// How the host program takes and shows addresses of Git files, by the prescribed calls.
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

TEST_F(GitAddresses, LogIsReadable)
{
    const std::string hash = repository.Commit(u"a.txt", "1", "the first");
    const HostRun run = RunPrescribed({u"log", Address(u"a.txt")});
    EXPECT_THAT(LinesOf(run.output),
                ElementsAre("  -  ", "    Working Copy", "    " + Utf8(repository / u"a.txt"),
                            testing::AllOf(StartsWith(hash + "  20"), EndsWith("  Ann")),
                            "    the first",
                            "    git://" + Utf8(repository / u"a.txt") + "#" + hash));
}

TEST_F(GitAddresses, LogIsCutWhereAskedFor)
{
    for (const char* content : {"1", "2", "3"})
        repository.Commit(u"a.txt", content, content);
    const auto linesOf = [&](const std::u16string& count) {
        return JsonLinesOf(
            RunPrescribed({u"--json", u"log", u"-n", count, Address(u"a.txt")}).output);
    };
    const auto two = linesOf(u"2");
    ASSERT_EQ(two.size(), 2U);
    EXPECT_EQ(two[1].Text("description"), "3") << "the newest behind the working copy";
    EXPECT_EQ(linesOf(u"0").size(), 0U);
    EXPECT_EQ(linesOf(u"99999999999999999999").size(), 4U);
}

TEST_F(GitAddresses, AddressesMayBeRelative)
{
    const std::string hash = repository.Commit(u"sub/a.txt", "old", "first");
    repository.Commit(u"sub/a.txt", "new", "second");
    const std::filesystem::path sub = repository.Folder().Path() / "sub";
    EXPECT_EQ(RunPrescribed({.arguments = {u"cat", u"git:a.txt"}, .folder = sub}).output, "new");
    const std::u16string revision(hash.begin(), hash.end());
    for (const std::u16string& address :
         {u"git:a.txt#" + revision, u"git://a.txt#" + revision, u"git:../sub/a.txt#" + revision})
        EXPECT_EQ(RunPrescribed({.arguments = {u"cat", address}, .folder = sub}).output, "old");
}

TEST_F(GitAddresses, RevisionsAreCompared)
{
    const std::string old = repository.Commit(u"a.txt", "same start", "first");
    repository.Commit(u"a.txt", "same stop!", "second");
    const HostRun run = RunPrescribed({u"compare", Address(u"a.txt", old), Address(u"a.txt")});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_EQ(run.output,
              "a.txt#" + old + ": different, 10 and 10 bytes, first difference at offset 7\n");
    EXPECT_EQ(RunPrescribed({u"compare", Address(u"a.txt"), repository / u"a.txt"}).exitCode, 0);
}

} // namespace

} // namespace tarnwell::test
