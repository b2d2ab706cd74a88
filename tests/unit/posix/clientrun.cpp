// Runs of clients where Linux promises more: signals, heirs of the pipes, and runs that leave one
// another alone.
#include "frame/messages.h"
#include "platform/child/commands.h"
#include "runner/streamreader.h"
#include "support/clientcall.h"
#include "support/environmentvalue.h"
#include "support/posix/child.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

#include <atomic>
#include <csignal>
#include <latch>
#include <set>
#include <sstream>
#include <thread>
#include <unistd.h>

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;

// The variables in a list of entries, each closed by a zero.
std::set<std::string> NamesIn(const std::u16string& printed)
{
    std::set<std::string> names;
    std::istringstream entries(fs::path(printed).string());
    for (std::string entry; std::getline(entries, entry, '\0');)
        names.insert(entry.substr(0, entry.find('=')));
    return names;
}

TEST(ClientRunPosix, SignalsCountFrom128)
{
    const ClientOutcome outcome = RunChildClient(u"signal 15");
    EXPECT_EQ(outcome.exitCode, 128 + SIGTERM);
    EXPECT_EQ(outcome.errors, u"last words");
}

TEST(ClientRunPosix, ACodeThatTheHostLosesStaysAsItWasSet)
{
    const auto act = [] {
        signal(SIGCHLD, SIG_IGN);
        const ClientOutcome outcome = RunChildClient(u"exit 3");
        return outcome.exitCode == 1 ? 0 : 1;
    };
    EXPECT_EQ(ExitCodeOfChild(act), 0);
}

TEST(ClientRunPosix, AnHeirOfThePipesIsWaitedFor)
{
    const TempFolder folder;
    WriteBytes(folder / u"told", "");
    const ClientOutcome outcome = RunChildClient(u"heir 2000 \"" + (folder / u"told") + u"\" \"" +
                                                 (folder / u"ended") + u"\"");
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.errors, u"the heir's words");
    WaitForFile(folder / u"ended");
}

TEST(ClientRunPosix, AnHeirThatLetsThePipesGoIsNot)
{
    const TempFolder folder;
    const ClientOutcome outcome =
        RunChildClient(u"heir 0 \"" + (folder / u"told") + u"\" \"" + (folder / u"ended") + u"\"");
    EXPECT_EQ(outcome.errors, u"the heir's words");
    WriteBytes(folder / u"told", "");
    WaitForFile(folder / u"ended");
    EXPECT_EQ(ReadBytes(folder / u"ended"), "told") << "it was waited for until it gave up";
}

// Of eight runs seven make their pipes, then the eighth's client starts, then theirs do. A client
// that held another's pipe would keep that run from ending.
TEST(ClientRunPosix, ARunThatGoesOnHoldsUpNoOther)
{
    constexpr int others = 7;
    const TempFolder folder;
    std::latch havePipes(others);
    std::latch eighthRuns(1);
    std::atomic<int> whole = 0;
    std::vector<std::thread> threads;
    const auto other = [&] {
        std::shared_ptr<StreamReaderThread> reader;
        ClientCall call = CallOfChild(u"both 100000", OsHandle());
        call.outputReader = [&](HANDLE readEnd) {
            havePipes.count_down();
            eighthRuns.wait();
            return reader = std::make_shared<StreamReaderThread>(readEnd, Decoding::Utf8);
        };
        const ClientOutcome outcome = RunClient(childClient, call);
        const bool isWhole = outcome.errors.size() == 100'000 && reader->text.size() == 100'000;
        whole += isWhole ? 1 : 0;
    };
    for (int i = 0; i < others; ++i)
        threads.emplace_back(other);
    havePipes.wait();
    int eighthCode = -1;
    std::thread eighth([&] {
        eighthCode =
            RunChildClient(u"await \"" + (folder / u"started") + u"\" \"" + (folder / u"told"))
                .exitCode;
    });
    WaitForFile(folder / u"started");
    eighthRuns.count_down();
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(whole, others);
    WriteBytes(folder / u"told", "");
    eighth.join();
    EXPECT_EQ(eighthCode, 0) << "they waited until it gave up";
}

TEST(ClientRunPosix, VariablesAreHiddenAsTheRowSays)
{
    const EnvironmentValue set("GIT_DIR", "/nowhere");
    const auto entries = [](const ClientRow& row) {
        const auto output = NewOutputFile();
        RunClient(row, CallOfChild(u"environment", *output));
        return NamesIn(Printed(*output));
    };
    ClientRow hiding = childClient;
    hiding.hiddenNames = u"GIT_";
    hiding.creationFlags = CREATE_UNICODE_ENVIRONMENT;
    EXPECT_TRUE(entries(childClient).contains("GIT_DIR"));
    EXPECT_FALSE(entries(hiding).contains("GIT_DIR"));
    EXPECT_TRUE(entries(hiding).contains("PATH"));
}

TEST(ClientRunPosix, AProgramInNoneOfTheFoldersIsNotFound)
{
    for (const char* const path : {"/nonexistent", "/etc/passwd", "/nonexistent:/dev/null/x", ""})
    {
        const EnvironmentValue searched("PATH", path);
        const auto output = NewOutputFile();
        ClientCall call = CallOfChild(u"exit 0", *output);
        call.program = u"tarnwell-no-such-program";
        const Thrown thrown = ThrownBy([&] { RunClient(childClient, call); });
        EXPECT_EQ(thrown.text, FormatMessageWithStatus(childClient.notFound, thrown.status))
            << path;
    }
}

} // namespace
} // namespace tarnwell::test
