// What becomes of the processes that a client has started, and of clients whose host has gone.
#include "runner/runningclient.h"

#include "frame/status.h"
#include "support/clientcall.h"
#include "support/posix/child.h"
#include "support/tempfolder.h"

#include <tarnwell/text.h>

#include <csignal>
#include <fstream>

namespace tarnwell::test
{
namespace
{

ClientCall Shell(const std::u16string& script)
{
    ClientCall call;
    call.program = u"/bin/sh";
    call.arguments = u"-c \"" + script + u"\"";
    return call;
}

// One that waits to be taken leave of is at its end, too.
bool Runs(pid_t process)
{
    std::ifstream file("/proc/" + std::to_string(process) + "/stat");
    std::string number, name, state;
    return file >> number >> name >> state && state != "Z" && state != "X";
}

// Who never ends lets the test run into its own limit.
void WaitForEndOf(pid_t process)
{
    while (Runs(process))
        usleep(1000);
}

pid_t NumberIn(const std::string& text)
{
    return static_cast<pid_t>(std::stol(text));
}

TEST(RunningClientPosix, ItsChildrenEndWithIt)
{
    Patience patience(nullptr, u"test");
    pid_t child = 0;
    {
        RunningClient client(childClient, Shell(u"sleep 1000 & echo $!; wait"));
        child = NumberIn(client.Read(patience));
        EXPECT_TRUE(Runs(child));
    }
    WaitForEndOf(child);
}

// Nobody waits for those that keep the pipes.
TEST(RunningClientPosix, AnHeirOfThePipesIsEndedWithIt)
{
    Patience patience(nullptr, u"test");
    RunningClient client(childClient, Shell(u"sleep 1000 & echo $!"));
    const pid_t child = NumberIn(client.Read(patience));
    EXPECT_TRUE(Runs(child));
}

// Daemons are left alone, also such as keep the pipes.
class Daemons : public testing::Test
{
protected:
    ~Daemons() override
    {
        // 0 would be all of the tests' own group.
        if (daemon_ > 0)
            kill(daemon_, SIGKILL);
    }

    // A client that starts a daemon and then does this.
    static ClientCall Call(const std::u16string& script)
    {
        return Shell(u"setsid sh -c 'echo $$; exec sleep 1000' & " + script);
    }
    void Learn(RunningClient& client)
    {
        std::string number;
        while (!number.ends_with('\n'))
            number += client.Read(patience_);
        daemon_ = NumberIn(number);
    }

    Patience patience_{nullptr, u"test"};
    pid_t daemon_ = 0;
};

TEST_F(Daemons, DontKeepAClientFromBeingLeft)
{
    {
        RunningClient client(childClient, Call(u"sleep 1000"));
        Learn(client);
    }
    EXPECT_TRUE(Runs(daemon_));
}

TEST_F(Daemons, DontKeepAClientFromBeingFinished)
{
    RunningClient client(childClient, Call(u"exit 3"));
    Learn(client);
    EXPECT_EQ(client.Finish(patience_).exitCode, 3);
    EXPECT_TRUE(Runs(daemon_));
}

TEST_F(Daemons, DontKeepAnAnswerFromEnding)
{
    RunningClient client(childClient, Call(u"exit 3"));
    Learn(client);
    EXPECT_EQ(client.Read(patience_), "");
    EXPECT_TRUE(Runs(daemon_));
}

TEST_F(Daemons, MayTalkForEver)
{
    {
        RunningClient client(
            childClient,
            Shell(u"setsid sh -c 'echo $$; while :; do echo; echo >&2; done' & sleep 1000"));
        Learn(client);
    }
    // Nobody listens any more.
    WaitForEndOf(daemon_);
}

TEST(RunningClientPosix, ACrashIsAFailure)
{
    Patience patience(nullptr, u"test");
    RunningClient client(childClient, Shell(u"kill -s SEGV $$"));
    const Thrown thrown = ThrownBy([&] { client.Finish(patience); });
    EXPECT_EQ(thrown.status, StatusFromError(ERROR_PROCESS_ABORTED));
}

TEST(RunningClientPosix, AKilledHostTakesItsClientsWithIt)
{
    const TempFolder folder;
    const std::u16string file = folder / u"numbers";
    const std::string script = "trap '' TERM HUP INT; sleep 1000 & echo $$ $! > " +
                               EncodeName(file).value() + ".new; mv " + EncodeName(file).value() +
                               ".new " + EncodeName(file).value() + "; wait";
    const pid_t host = fork();
    if (host == 0)
    {
        const RunningClient client(childClient, Shell(DecodeName(script)));
        WaitForFile(file);
        kill(getpid(), SIGKILL);
    }
    int status = 0;
    ASSERT_EQ(waitpid(host, &status, 0), host);
    ASSERT_TRUE(WIFSIGNALED(status));
    std::ifstream numbers{std::filesystem::path(file)};
    pid_t client = 0;
    pid_t child = 0;
    ASSERT_TRUE(numbers >> client >> child);
    WaitForEndOf(client);
    WaitForEndOf(child);
}

} // namespace
} // namespace tarnwell::test
