// Runs of clients where Linux promises more: signals, heirs of the pipes, and runs that leave one
// another alone.
#include "frame/messages.h"
#include "platform/child/commands.h"
#include "support/clientcall.h"
#include "support/environmentvalue.h"
#include "support/posix/child.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <set>
#include <sstream>
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
