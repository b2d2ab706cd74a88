// How the host program shows a Perforce depot: that of the stand-in for the client, or one on a
// real server (./test perforce-live), by the prescribed calls.
#include "e2e/hostrun.h"
#include "e2e/json.h"
#include "support/perforcedepot.h"

#include <tarnwell/text.h>

#include <gmock/gmock.h>

namespace tarnwell::test
{

namespace
{

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

class PerforceAddresses : public testing::Test
{
protected:
    const std::unique_ptr<PerforceServer> server = PerforceServer::Make();
    const std::string first = std::to_string(server->Submit("dir/a.txt", "one", "the first"));
    const std::string second = std::to_string(server->Submit("dir/a.txt", "two!", "the second"));
    const std::string third = std::to_string(server->Submit("dir/sub/b c.txt", "b"));
    const std::u16string dir = server->Address("dir");
    const std::u16string file = dir + u"/a.txt";
};

TEST_F(PerforceAddresses, AreListed)
{
    const HostRun run = RunPrescribed({u"ls", dir});
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(
        LinesOf(run.output),
        ElementsAre(testing::AllOf(StartsWith("--r-         4 B  20"), EndsWith("  a.txt#2")),
                    testing::AllOf(StartsWith("d---           -  1970-01-01"), EndsWith("  sub"))));
    const auto items = JsonLinesOf(RunPrescribed({u"--json", u"ls", dir}).output);
    ASSERT_EQ(items.size(), 2U);
    EXPECT_EQ(items[0].Text("path"), Utf8(file + u"#2"));
    EXPECT_EQ(items[0].Text("comparable_name"), "a.txt");
    EXPECT_EQ(items[0].Text("comparable_url"), Utf8(file));
    EXPECT_EQ(items[1].Text("path"), Utf8(dir + u"/sub"));
}

TEST_F(PerforceAddresses, AreShown)
{
    const HostRun run = RunPrescribed({u"--json", u"stat", file + u"#1"});
    EXPECT_EQ(run.exitCode, 0);
    const JsonLine facts = JsonLine(LinesOf(run.output).at(0));
    EXPECT_EQ(facts.Text("name"), "a.txt#1");
    EXPECT_EQ(facts.Raw("size"), "3");
    EXPECT_EQ(facts.Raw("folder"), "false");
    const JsonLine folder =
        JsonLine(LinesOf(RunPrescribed({u"--json", u"stat", dir}).output).at(0));
    EXPECT_EQ(folder.Raw("folder"), "true");
    const HostRun missing = RunPrescribed({u"stat", dir + u"/none"});
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_THAT(missing.errors,
                StartsWith("Couldn't find the URI \"" + Utf8(dir + u"/none") + "\""));
}

TEST_F(PerforceAddresses, AreRead)
{
    EXPECT_EQ(RunPrescribed({u"cat", file}).output, "two!");
    EXPECT_EQ(RunPrescribed({u"cat", file + u"#1"}).output, "one");
    EXPECT_EQ(RunPrescribed({u"cat", dir + u"/sub/b c.txt@" + DecodeName(third)}).output, "b");
    const HostRun missing = RunPrescribed({u"cat", dir + u"/none"});
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_EQ(missing.output, "");
    EXPECT_THAT(missing.errors, StartsWith("Couldn't find the URI"));
    const HostRun beyond = RunPrescribed({u"cat", dir + u"/a.txt#7"});
    EXPECT_EQ(beyond.exitCode, 1);
}

TEST_F(PerforceAddresses, HaveALog)
{
    const std::string local = Utf8(server->Sync("dir/a.txt").u16string());
    const HostRun run = RunPrescribed({u"log", file});
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.exitCode, 0);
    const std::string author = "  " + server->Author();
    EXPECT_THAT(LinesOf(run.output),
                ElementsAre("Working Copy  -  ", "    " + local,
                            testing::AllOf(StartsWith("2  20"), EndsWith(author)),
                            "    " + second + ": the second", "    " + Utf8(file) + "#2",
                            testing::AllOf(StartsWith("1  20"), EndsWith(author)),
                            "    " + first + ": the first", "    " + Utf8(file) + "#1"));
    EXPECT_THAT(RunPrescribed({u"log", dir + u"/none"}).output, "No revisions.\n");
}

TEST_F(PerforceAddresses, AreCompared)
{
    const HostRun run = RunPrescribed({u"compare", file + u"#1", file});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_EQ(run.output, "a.txt#1: different, 3 and 4 bytes, first difference at offset 0\n");
    // Pinned files pair with others by their names.
    const HostRun folders = RunPrescribed({u"compare", dir + u"@" + DecodeName(first), dir});
    EXPECT_EQ(folders.exitCode, 3);
    EXPECT_THAT(LinesOf(folders.output),
                ElementsAre("a.txt: different, 3 and 4 bytes, first difference at offset 0",
                            "sub: only right", "0 equal, 1 different, 1 only right"));
    EXPECT_EQ(RunPrescribed({u"compare", dir, dir}).exitCode, 0);
}

// One that a server lists and no address can hold.
TEST_F(PerforceAddresses, ANameThatIsNoneLosesNoOther)
{
    server->Submit("dir/a\rb", "x");
    for (const bool json : {false, true})
    {
        std::vector<std::u16string> arguments = {u"ls", dir};
        if (json)
            arguments.insert(arguments.begin(), u"--json");
        const HostRun run = RunPrescribed(arguments);
        EXPECT_EQ(run.exitCode, 1);
        EXPECT_EQ(LinesOf(run.output).size(), 2U) << run.output;
        EXPECT_THAT(run.errors, HasSubstr("Invalid Perforce URI"));
    }
    const HostRun compared = RunPrescribed({u"compare", dir, dir});
    EXPECT_EQ(compared.exitCode, 1);
    EXPECT_THAT(LinesOf(compared.output),
                ElementsAre("?: failed", "?: failed", "3 equal, 2 failed"));
    EXPECT_THAT(compared.errors, HasSubstr("Invalid Perforce URI"));
}

// Which files a workspace has in another form, their types tell.
TEST(PerforceWorkspaces, AreComparedByWhatTheyConvert)
{
    if (PerforceServer::IsReal())
        GTEST_SKIP() << "only the stand-in is told the types of files";
    PerforceDepot depot;
    depot.SubmitAs("text+k", "dir/k.txt", "$Id$ x\n");
    depot.SubmitAs("text", "dir/plain.txt", "$Id$ x\n");
    depot.SubmitAs("binary", "dir/raw", "x\n");
    const TempFolder disk;
    WriteBytes(disk / u"k.txt", "$Id: //depot/base/dir/k.txt#1 $ x\r\n");
    WriteBytes(disk / u"plain.txt", "$Id$ x\r\n");
    WriteBytes(disk / u"raw", "x\n");
    const std::u16string dir = depot.Address("dir");
    EXPECT_EQ(RunHost({u"compare", dir, disk.Text()}).output, "3 equal\n");
    WriteBytes(disk / u"plain.txt", "$Id: filled in $ x\n");
    WriteBytes(disk / u"raw", "x\r\n");
    EXPECT_THAT(LinesOf(RunHost({u"compare", dir, disk.Text()}).output),
                ElementsAre(StartsWith("plain.txt: different"), StartsWith("raw: different"),
                            "1 equal, 2 different"));
}

TEST(PerforceCredentials, AreThoseOfTheCommandLine)
{
    if (PerforceServer::IsReal())
        GTEST_SKIP() << "only the stand-in has users that it is told of";
    PerforceDepot depot;
    depot.Submit("a.txt", "two!");
    const std::u16string file = depot.Address("a.txt");
    depot.Tell("port\tserver:1666");
    depot.Tell("user\tann\tsecret");
    EXPECT_EQ(RunPrescribed({u"--user", u"ann", u"--password", u"secret", u"--server",
                             u"server:1666", u"cat", file})
                  .output,
              "two!");
    const HostRun refused = RunPrescribed(
        {u"--user", u"ann", u"--password", u"wrong", u"--server", u"server:1666", u"cat", file});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_THAT(refused.errors, HasSubstr("Perforce password (P4PASSWD) invalid or unset."));
}

} // namespace

} // namespace tarnwell::test
