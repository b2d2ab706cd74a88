// Every command on a server of the test's own, which answers on both platforms.
#include "e2e/hostrun.h"
#include "e2e/json.h"
#include "support/ftp/scriptedserver.h"
#include "support/tempfolder.h"

#include <gmock/gmock.h>

#include <thread>

namespace tarnwell::test
{

namespace
{

using testing::EndsWith;
using testing::StartsWith;

class FtpAddresses : public testing::Test
{
protected:
    FtpAddresses()
    {
        server.MakeFolder("/d");
        server.WriteFile("/d/kept", "kept");
        WriteBytes(folder / u"source", bytes);
    }

    std::u16string Address(const std::u16string& path) const
    {
        return u"ftp://" + server.Host() + u"/" + path;
    }
    HostRun Run(const std::vector<std::u16string>& arguments) const
    {
        std::vector<std::u16string> all = {u"--user", u"ftp",      u"--password",
                                           u"secret", u"--server", server.Host()};
        all.insert(all.end(), arguments.begin(), arguments.end());
        return RunHost(all);
    }
    // What it prints, which must be all.
    std::string Printed(const std::vector<std::u16string>& arguments) const
    {
        const HostRun run = Run(arguments);
        EXPECT_EQ(run.errors, "");
        EXPECT_EQ(run.exitCode, 0);
        return run.output;
    }
    std::vector<std::string> Names(const std::u16string& path) const
    {
        std::vector<std::string> names;
        for (const JsonLine& item : JsonLinesOf(Printed({u"--json", u"ls", Address(path)})))
            names.push_back(item.Text("name"));
        return names;
    }

    const std::string bytes = std::string(150'000, 'a') + std::string(150'001, 'b');
    const TempFolder folder;
    ScriptedFtpServer server;
};

TEST_F(FtpAddresses, ArePutReadCopiedAndCompared)
{
    EXPECT_EQ(Printed({u"put", folder / u"source", Address(u"d/new")}), "");
    EXPECT_TRUE(server.File("/d/new") == bytes);
    EXPECT_TRUE(Printed({u"cat", Address(u"d/new")}) == bytes);
    EXPECT_EQ(Printed({u"cp", Address(u"d/new"), Address(u"d/copy")}), "");
    EXPECT_TRUE(server.File("/d/copy") == bytes);
    EXPECT_EQ(Printed({u"compare", folder / u"source", Address(u"d/copy")}),
              "source: equal, 300001 and 300001 bytes\n");
    server.WriteFile("/d/copy", bytes + "c");
    EXPECT_EQ(Run({u"compare", Address(u"d/new"), Address(u"d/copy")}).exitCode, 3);
}

TEST_F(FtpAddresses, AreListedToldMadeAndRemoved)
{
    server.WriteFile("/d/other", "12345");
    EXPECT_THAT(Names(u"d"), testing::ElementsAre("kept", "other"));
    const JsonLine facts(LinesOf(Printed({u"--json", u"stat", Address(u"d/other")})).at(0));
    EXPECT_EQ(facts.Raw("size"), "5");
    EXPECT_EQ(facts.Raw("folder"), "false");
    EXPECT_EQ(Printed({u"mkdir", Address(u"d/sub")}), "");
    EXPECT_TRUE(server.HasFolder("/d/sub"));
    EXPECT_EQ(Printed({u"--yes", u"rm", Address(u"d/other")}), "");
    EXPECT_EQ(Printed({u"--yes", u"rm", Address(u"d/sub")}), "");
    EXPECT_THAT(Names(u"d"), testing::ElementsAre("kept"));
    EXPECT_EQ(server.File("/d/kept"), "kept");
}

// Neither for the end of what was asked, nor for that of the connection that is kept.
TEST_F(FtpAddresses, KeepNobodyWaitingAtTheEnd)
{
    server.Answer("QUIT", {});
    std::thread host([&] { EXPECT_EQ(Printed({u"cat", Address(u"d/kept")}), "kept"); });
    EXPECT_TRUE(server.SeesTheEndOf(1));
    server.DropConnections();
    host.join();
}

TEST_F(FtpAddresses, FailInTheServersWords)
{
    server.Answer("STOR", {.first = "552 Quota exceeded.\r\n"});
    const HostRun refused = Run({u"put", folder / u"source", Address(u"d/new")});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_THAT(refused.errors, StartsWith("Failed to open \"d/new\" for reading or writing."));
    EXPECT_THAT(refused.errors, testing::HasSubstr("Quota exceeded."));
    EXPECT_THAT(refused.errors, EndsWith("\n0x80072EE3\n"));
    const HostRun missing = Run({u"cat", Address(u"d/none")});
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_THAT(missing.errors, StartsWith("Couldn't find the URI \"d/none\"."));
    EXPECT_THAT(missing.errors, EndsWith("\n0x80070002\n"));
}

// A stream's end doesn't tell whether the server kept it.
TEST_F(FtpAddresses, AnUploadThatTheServerDidNotKeepFails)
{
    server.WriteFile("/d/new", "12345");
    server.Answer(
        "STOR",
        {.first = "150 go on\r\n", .last = "552 Quota exceeded.\r\n", .takes = bytes.size()});
    const HostRun refused = Run({u"put", folder / u"source", Address(u"d/new")});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_THAT(refused.errors,
                EndsWith(" the server has 5 bytes, which isn't what was sent.\n0x80004005\n"));
    const HostRun none =
        Run({u"--json", u"put", folder / u"source", Address(u"d/not kept at all")});
    EXPECT_EQ(none.exitCode, 1);
    EXPECT_THAT(JsonLine(LinesOf(none.errors).at(0)).Text("message"),
                testing::HasSubstr(" the server has 0 bytes, "));
    // What can't be seen may have arrived.
    for (const char* const command : {"LIST", "MLSD", "NLST", "SIZE"})
        server.Answer(command, {.first = "550 Not for you.\r\n"});
    EXPECT_EQ(Run({u"put", folder / u"source", Address(u"d/unseen")}).exitCode, 0);
}

} // namespace

} // namespace tarnwell::test
