// What becomes of the processes that a client has started, and of clients whose host has gone.
#include "runner/runningclient.h"

#include "frame/status.h"
#include "platform/clientgroup.h"
#include "platform/posix/processes/groupguard.h"
#include "runner/clientstart.h"
#include "support/clientcall.h"
#include "support/posix/child.h"
#include "support/tempfolder.h"

#include <tarnwell/text.h>

#include <array>
#include <csignal>
#include <fstream>
#include <functional>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

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

// A client and its child, of which neither wants to end. Their numbers go to the file.
std::string Stubborn(const std::u16string& file)
{
    const std::string name = EncodeName(file).value();
    return "trap '' TERM HUP INT; sleep 1000 & echo $$ $! > " + name + ".new; mv " + name +
           ".new " + name + "; wait";
}

// A host does this first, then starts a client, does that and is killed.
void ExpectClientsToEndWithHost(
    const std::function<void()>& first = [] {}, const std::function<void()>& last = [] {})
{
    const TempFolder folder;
    const std::u16string file = folder / u"numbers";
    const pid_t host = fork();
    if (host == 0)
    {
        first();
        const RunningClient client(childClient, Shell(DecodeName(Stubborn(file))));
        WaitForFile(file);
        last();
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

void RunAClient()
{
    Patience patience(nullptr, u"test");
    RunningClient client(childClient, Shell(u"exit 0"));
    client.Finish(patience);
}

TEST(RunningClientPosix, AKilledHostTakesItsClientsWithIt)
{
    ExpectClientsToEndWithHost();
}

TEST(RunningClientPosix, AKilledHostTakesItsLaterClientsWithIt)
{
    ExpectClientsToEndWithHost(RunAClient);
}

TEST(RunningClientPosix, AKilledHostThatLosesItsChildrensEndsTakesItsClientsWithIt)
{
    ExpectClientsToEndWithHost([] { signal(SIGCHLD, SIG_IGN); });
}

// What stands guard is nobody's child but of who takes up orphans.
pid_t GuardOfAClient()
{
    prctl(PR_SET_CHILD_SUBREAPER, 1);
    RunAClient();
    std::ifstream children("/proc/thread-self/children");
    pid_t guard = 0;
    if (!(children >> guard))
        _exit(1);
    return guard;
}

TEST(RunningClientPosix, AKilledHostTakesItsClientsWithItAlsoIfTheirGuardWasEndedBefore)
{
    ExpectClientsToEndWithHost([] {
        const pid_t guard = GuardOfAClient();
        if (kill(guard, SIGKILL) != 0 || waitpid(guard, nullptr, 0) != guard)
            _exit(1);
    });
}

// A guard that was stopped for good is told of groups until there is no room for more.
void ExpectClientsToEndWithHostWhoseGuardIsStopped(void (*tell)())
{
    pid_t guard = 0;
    const auto stop = [&] {
        guard = GuardOfAClient();
        if (kill(guard, SIGSTOP) != 0 || waitpid(guard, nullptr, WUNTRACED) != guard)
            _exit(1);
    };
    const auto tellUntilItIsReplaced = [&] {
        for (int tries = 0; Runs(guard); ++tries)
        {
            if (tries == 100000)
                _exit(1);
            tell();
        }
    };
    ExpectClientsToEndWithHost(stop, tellUntilItIsReplaced);
}

// No process can have it.
constexpr pid_t nobodysGroup = 0x7FFFFFFF;

TEST(RunningClientPosix, AStoppedGuardIsReplacedByWhoStartsAClient)
{
    ExpectClientsToEndWithHostWhoseGuardIsStopped([] {
        if (posix::WatchGroup(nobodysGroup) != 0)
            _exit(1);
    });
}

TEST(RunningClientPosix, AStoppedGuardIsReplacedByWhoEndsAClient)
{
    ExpectClientsToEndWithHostWhoseGuardIsStopped([] { posix::LeaveGroup(nobodysGroup); });
}

TEST(RunningClientPosix, ACopyOfTheHostDoesNotKeepItsClients)
{
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    ExpectClientsToEndWithHost([&] {
        RunAClient();
        const pid_t copy = fork();
        if (copy != 0)
            return;
        // Until the test closes its end.
        close(ends[1]);
        char byte = 0;
        _exit(read(ends[0], &byte, 1) == 0 ? 0 : 1);
    });
    close(ends[0]);
    close(ends[1]);
}

TEST(RunningClientPosix, NothingIsLeftToWaitFor)
{
    const auto act = [] {
        RunAClient();
        return waitpid(-1, nullptr, 0) == -1 && errno == ECHILD ? 0 : 1;
    };
    EXPECT_EQ(ExitCodeOfChild(act), 0);
}

TEST(RunningClientPosix, ItsChildrenEndWithItAlsoWhereTheHostLosesItsChildrensEnds)
{
    const auto act = [] {
        signal(SIGCHLD, SIG_IGN);
        Patience patience(nullptr, u"test");
        pid_t child = 0;
        {
            RunningClient client(childClient, Shell(u"sleep 1000 & echo $!"));
            child = NumberIn(client.Read(patience));
        }
        WaitForEndOf(child);
        return 0;
    };
    EXPECT_EQ(ExitCodeOfChild(act), 0);
}

// As the first process of a container does.
TEST(RunningClientPosix, ItsChildrenEndWithItAlsoWhereTheHostWaitsForAllItsChildren)
{
    const auto act = [] {
        for (int time = 0; time < 2; ++time)
        {
            Patience patience(nullptr, u"test");
            pid_t child = 0;
            {
                RunningClient client(childClient, Shell(u"sleep 1000 & echo $!"));
                child = NumberIn(client.Read(patience));
                if (waitpid(-1, nullptr, 0) < 0)
                    return 1;
            }
            WaitForEndOf(child);
        }
        return 0;
    };
    EXPECT_EQ(ExitCodeOfChild(act), 0);
}

// From then on: who is told of a number that nobody keeps might end another's group.
TEST(RunningClientPosix, OnceTheHostWaitedForAllItsChildrenEachGroupKeepsItsNumberItself)
{
    const auto act = [] {
        for (const bool isKept : {false, true})
        {
            Patience patience(nullptr, u"test");
            RunningClient client(childClient, Shell(u"echo $$"));
            const pid_t group = NumberIn(client.Read(patience));
            if (waitpid(-1, nullptr, 0) != group)
                return 1;
            if ((kill(-group, 0) == 0) != isKept)
                return 2;
        }
        return 0;
    };
    EXPECT_EQ(ExitCodeOfChild(act), 0);
}

TEST(RunningClientPosix, AKilledHostThatHasClosedAllItsDescriptorsTakesItsClientsWithIt)
{
    ExpectClientsToEndWithHost([] {
        RunAClient();
        if (close_range(STDERR_FILENO + 1, ~0U, 0) != 0)
            _exit(1);
        // The numbers become the host's own.
        std::array<std::array<int, 2>, 8> own{};
        for (auto& ends : own)
        {
            if (socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data()) != 0)
                _exit(1);
        }
        RunAClient();
        char byte = 0;
        for (const auto& ends : own)
        {
            for (const int end : ends)
            {
                if (recv(end, &byte, 1, MSG_DONTWAIT) != -1 || errno != EAGAIN)
                    _exit(1);
            }
        }
    });
}

// The number may be another's by then.
TEST(RunningClientPosix, AGroupThatWasLeftIsNotEndedWithTheHost)
{
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const pid_t host = fork();
    if (host == 0)
    {
        std::array<pid_t, 2> groups{};
        for (pid_t& group : groups)
        {
            group = fork();
            if (group == 0)
                pause();
            if (setpgid(group, group) != 0 || posix::WatchGroup(group) != 0)
                _exit(1);
        }
        posix::LeaveGroup(groups[0]);
        if (write(ends[1], groups.data(), sizeof groups) == sizeof groups)
            kill(getpid(), SIGKILL);
        _exit(1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(host, &status, 0), host);
    ASSERT_TRUE(WIFSIGNALED(status));
    std::array<pid_t, 2> groups{};
    ASSERT_EQ(read(ends[0], groups.data(), sizeof groups), static_cast<ssize_t>(sizeof groups));
    WaitForEndOf(groups[1]);
    EXPECT_TRUE(Runs(groups[0]));
    kill(groups[0], SIGKILL);
    close(ends[0]);
    close(ends[1]);
}

// So that the end of a group never is another's.
TEST(RunningClientPosix, AGroupKeepsItsNumberUntilItIsEnded)
{
    const OsHandle group(CreateClientGroup());
    ASSERT_TRUE(group);
    const ClientRow& row = childClient;
    const Pipe input = MakePipe(row, &Pipe::read);
    const Pipe output = MakePipe(row, &Pipe::write);
    const ClientProcess client = StartClient(
        row, Shell(u"echo $$"), {input.read.Get(), output.write.Get(), output.write.Get()}, group);
    ASSERT_EQ(WaitForSingleObject(client.process.Get(), INFINITE), WAIT_OBJECT_0);
    std::array<char, 32> text{};
    DWORD size = 0;
    ASSERT_TRUE(ReadPipe(group.Get(), output.read.Get(), text.data(), text.size() - 1, &size));
    const pid_t number = NumberIn(text.data());
    EXPECT_EQ(kill(number, 0), 0) << "still there";
    EXPECT_EQ(client.ExitCode(99), 0);
    EXPECT_TRUE(EndClientGroup(group.Get()));
    EXPECT_EQ(kill(number, 0), -1);
    EXPECT_EQ(client.ExitCode(99), 0);
}

} // namespace
} // namespace tarnwell::test
