// A client that doesn't come to its end, as the host program waits for it.
#include "e2e/hostrun.h"
#include "e2e/posix/terminalrun.h"
#include "support/clients.h"
#include "support/environmentvalue.h"
#include "support/repository.h"

#include <gmock/gmock.h>

#include <cstdlib>

namespace tarnwell::test
{

namespace
{

using testing::HasSubstr;

namespace fs = std::filesystem;

// Tells a history as Git does, and then waits until it is ended.
class SlowClient : public ClientTest
{
protected:
    SlowClient()
    {
        hash_ = repository_.Commit(u"a.txt", "1", "the first");
        WriteBytes(programs_ / u"git", "#!/bin/sh\nPATH=${PATH#*:}\ncase \"$*\" in\n"
                                       "*log*) git \"$@\" && exec sleep 1000 ;;\n"
                                       "*) exec git \"$@\" ;;\nesac\n");
        fs::permissions(programs_.Path() / "git", fs::perms::owner_all);
    }

    const Repository repository_;
    const TempFolder programs_;
    const TempFolder out_;
    std::string hash_;
    const EnvironmentValue path_{"PATH",
                                 (programs_.Path().string() + ":" + std::getenv("PATH")).c_str()};
};

TEST_F(SlowClient, IsEndedByCtrlC)
{
    bool isTyped = false;
    const TerminalRun run =
        RunOnTerminal({"log", "git:" + Utf8(repository_ / u"a.txt")},
                      [&](const std::string& shown) -> std::string {
                          if (isTyped || shown.find("the first") == std::string::npos)
                              return {};
                          isTyped = true;
                          return ctrlC;
                      });
    EXPECT_TRUE(isTyped) << "the first revision is there before the client has ended";
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.shown, HasSubstr("The operation was cancelled."));
    EXPECT_THAT(run.shown, testing::EndsWith("\r\n0x80004004\r\n"));
}

// Also where nobody reads line by line.
TEST_F(SlowClient, KeepsNobodyWaitingForTheFirstRevision)
{
    const HostRun run = RunProcess(
        "sh", {.arguments = {u"-c",
                             u"\"$0\" log \"git:$1\" >\"$2\" & i=0\n"
                             u"while [ ! -s \"$2\" ] && [ $i -lt 1000 ]; do\n"
                             u"sleep 0.05; i=$((i + 1)); done\n"
                             u"kill $! && cat \"$2\"",
                             HostProgram().u16string(), repository_ / u"a.txt", out_ / u"log"}});
    EXPECT_THAT(run.output, testing::StartsWith(hash_ + "  20"));
    EXPECT_EQ(run.exitCode, 0) << "it was still there to be ended";
}

} // namespace

} // namespace tarnwell::test
