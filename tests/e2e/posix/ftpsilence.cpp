// Ctrl-C on a terminal while an FTP server keeps the program waiting: nobody waits as long as for
// the server.
#include "e2e/hostrun.h"
#include "e2e/posix/terminalrun.h"
#include "support/ftp/scriptedserver.h"
#include "support/tempfolder.h"

#include <gmock/gmock.h>

#include <chrono>
#include <thread>

namespace tarnwell::test
{
namespace
{

using testing::EndsWith;

class FtpSilence : public testing::Test
{
protected:
    FtpSilence()
    {
        WriteBytes(folder / u"source", std::string(100'000'000, 's'));
        server.WriteFile("/source", std::string(30'000'000, 's'));
    }

    std::string Address(const std::string& path) const
    {
        return "ftp://" + Utf8(server.Host()) + "/" + path;
    }
    // Gives Ctrl-C, once, when the server has been asked to store something.
    TerminalRun RunUntilStored(const std::vector<std::string>& arguments)
    {
        std::vector<std::string> all = {"--user", "ftp",      "--password",
                                        "secret", "--server", Utf8(server.Host())};
        all.insert(all.end(), arguments.begin(), arguments.end());
        bool isTyped = false;
        return RunOnTerminal(all, [&](const std::string&) -> std::string {
            if (isTyped)
                return {};
            isTyped = server.Count("STOR") > 0;
            if (isTyped)
                return ctrlC;
            // Its echo brings us here again.
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            return ".";
        });
    }

    const TempFolder folder;
    ScriptedFtpServer server;
};

TEST_F(FtpSilence, OfWhoeverTakesNothingDoesNotHoldAnUpload)
{
    server.Answer("STOR", {.first = "150 go on\r\n", .stalls = true});
    const TerminalRun run =
        RunUntilStored({"put", (folder.Path() / "source").string(), Address("t")});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.shown, EndsWith("\r\x1b[KThe copy was cancelled.\r\n0x80004004\r\n"));
    EXPECT_EQ(server.Count("STOR"), 1);
}

TEST_F(FtpSilence, OfWhoeverTakesNothingDoesNotHoldACopy)
{
    server.Answer("STOR", {.first = "150 go on\r\n", .stalls = true});
    const TerminalRun run = RunUntilStored({"--json", "cp", Address("source"), Address("t")});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(
        run.shown,
        EndsWith("{\"status\":\"0x80004004\",\"message\":\"The copy was cancelled.\"}\r\n"));
}

TEST_F(FtpSilence, OfWhoeverDoesNotAnswerHoldsNothing)
{
    server.Answer("STOR", {});
    const TerminalRun run =
        RunUntilStored({"put", (folder.Path() / "source").string(), Address("t")});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.shown, EndsWith("The copy was cancelled.\r\n0x80004004\r\n"));
}

// All has been sent, and what comes of it isn't said.
TEST_F(FtpSilence, AtTheEndOfAnUploadHoldsNothing)
{
    WriteBytes(folder / u"small", "x");
    server.Answer("STOR", {.first = "150 go on\r\n", .takes = 1, .stalls = true});
    const TerminalRun run =
        RunUntilStored({"put", (folder.Path() / "small").string(), Address("t")});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.shown, EndsWith("The copy was cancelled.\r\n0x80004004\r\n"));
}

} // namespace
} // namespace tarnwell::test
