// Processes as only Linux has them: bytes, descriptors, signals, and hosts that are odd about them.
#include "platform/childrun.h"
#include "support/opened.h"
#include "support/tempfolder.h"

#include <gmock/gmock.h>

#include <atomic>
#include <csignal>
#include <fcntl.h>
#include <functional>
#include <pthread.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace tarnwell::test
{
namespace
{

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;

// What `act` answers in a process of its own.
int InAnotherHost(const std::function<int()>& act)
{
    const pid_t host = fork();
    if (host == 0)
        _exit(act());
    int status = 0;
    EXPECT_EQ(waitpid(host, &status, 0), host);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

bool IsWhole(const Ended& ended)
{
    return ended.exitCode == 0U && Texts(ended.output) == std::vector<std::string>{"a b"};
}

TEST(ProcessPosix, SignalsCountFrom128)
{
    const Ended ended = RunChild({u"kill"});
    EXPECT_THAT(ended.exitCode, Optional(137U));
    EXPECT_EQ(ended.errorText, "last words");
}

TEST(ProcessPosix, ArgumentsThatAreNoTextKeepTheirBytes)
{
    const Ended ended = RunChild({u"arguments", u"a\xDCE4z"});
    EXPECT_THAT(Texts(ended.output), ElementsAre("a\xE4z"));
}

TEST(ProcessPosix, WhatStandsForNoBytesIsRefused)
{
    EXPECT_EQ(RunChild({u"arguments", u"\xD800"}).startError, ERROR_INVALID_NAME);
    EXPECT_EQ(
        RunChild({u"environment"}, {.environment = std::u16string(u"A=\xD800\0", 4)}).startError,
        ERROR_INVALID_NAME);
    EXPECT_EQ(RunChild({u"folder"}, {.folder = u"/\xD800"}).startError, ERROR_INVALID_NAME);
}

TEST(ProcessPosix, EnvironmentKeepsBytesThatAreNoText)
{
    setenv("TARNWELL_BYTES", "\xE4", 1);
    WCHAR* const block = GetEnvironmentStringsW();
    std::u16string entries;
    for (const WCHAR* entry = block; *entry != 0; entry += Units(entry).size() + 1)
        entries.append(Units(entry)) += u'\0';
    FreeEnvironmentStringsW(block);
    unsetenv("TARNWELL_BYTES");
    EXPECT_NE(entries.find(u"TARNWELL_BYTES=\xDCE4"), std::u16string::npos);
    const Ended ended = RunChild({u"environment"}, {.environment = entries});
    EXPECT_THAT(Texts(ended.output), Contains("TARNWELL_BYTES=\xE4"));
}

TEST(ProcessPosix, EnvironmentMayBeEmpty)
{
    const Ended ended = RunChild({u"environment"}, {.environment = u""});
    EXPECT_THAT(ended.exitCode, Optional(0U));
    EXPECT_EQ(ended.output, "");
}

TEST(ProcessPosix, FileThatIsNoProgramSaysSo)
{
    const TempFolder folder;
    WriteBytes(folder / u"plain", "text");
    EXPECT_EQ(RunLine(Quoted(folder / u"plain")).startError, ERROR_ACCESS_DENIED);
    std::filesystem::permissions(folder.Path() / "plain", std::filesystem::perms::owner_all);
    EXPECT_EQ(RunLine(Quoted(folder / u"plain")).startError, ERROR_BAD_EXE_FORMAT);
}

TEST(ProcessPosix, FolderIsLookedAtBeforeTheProgram)
{
    const Ended ended = RunLine(u"\"tarnwell-no-such-program\"", {.folder = u"/no-such-folder"});
    EXPECT_EQ(ended.startError, ERROR_DIRECTORY);
}

TEST(ProcessPosix, ChildHasThreeDescriptors)
{
    // One that the host lets its own children have.
    const int leaky = open("/dev/null", O_RDONLY);
    const Ended ended = RunChild({u"descriptors"});
    close(leaky);
    EXPECT_THAT(ended.exitCode, Optional(0U));
    EXPECT_THAT(Texts(ended.output), IsEmpty());
}

TEST(ProcessPosix, ChildrenInParallelHaveThreeDescriptorsEach)
{
    std::atomic<int> whole = 0;
    std::vector<std::thread> threads;
    const auto run = [&] {
        for (int i = 0; i < 10; ++i)
        {
            const Ended ended = RunChild({u"descriptors"});
            whole += ended.exitCode == 0U && ended.output.empty() ? 1 : 0;
        }
    };
    for (int i = 0; i < 8; ++i)
        threads.emplace_back(run);
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(whole, 80);
}

TEST(ProcessPosix, ChildHasSignalsAsAFreshProgram)
{
    const auto act = [] {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_BLOCK, &all, nullptr);
        for (const int number : {SIGPIPE, SIGINT})
            signal(number, SIG_IGN);
        const Ended ended = RunChild({u"signals"});
        return ended.exitCode == 0U && ended.output.empty() ? 0 : 1;
    };
    EXPECT_EQ(InAnotherHost(act), 0);
}

TEST(ProcessPosix, HostThatIgnoresItsChildrenLosesTheCode)
{
    const auto act = [] {
        signal(SIGCHLD, SIG_IGN);
        Child child(ChildCommand({u"exit", u"3"}));
        child.CloseInput();
        child.Collect();
        if (WaitForSingleObject(child.Process(), INFINITE) != WAIT_OBJECT_0)
            return 1;
        DWORD code = 77;
        if (GetExitCodeProcess(child.Process(), &code) || code != 77)
            return 2;
        return GetLastError() == ERROR_WAIT_NO_CHILDREN ? 0 : 3;
    };
    EXPECT_EQ(InAnotherHost(act), 0);
}

TEST(ProcessPosix, HostThatCollectsAllChildrenLosesTheCode)
{
    const auto act = [] {
        Child child(ChildCommand({u"exit", u"3"}));
        child.CloseInput();
        int status = 0;
        wait(&status);
        const bool hasEnded = WaitForSingleObject(child.Process(), INFINITE) == WAIT_OBJECT_0;
        DWORD code = 77;
        return hasEnded && !GetExitCodeProcess(child.Process(), &code) && code == 77 ? 0 : 1;
    };
    EXPECT_EQ(InAnotherHost(act), 0);
}

TEST(ProcessPosix, HostMayHaveClosedAnyStandardDescriptors)
{
    for (int closed = 0; closed < 8; ++closed)
    {
        const auto act = [closed] {
            for (int descriptor = 0; descriptor < 3; ++descriptor)
            {
                if ((closed >> descriptor & 1) != 0)
                    close(descriptor);
            }
            const TempFolder folder;
            const Ended arguments = RunChild({u"arguments", u"a b"}, {.folder = folder.Text()});
            if (!IsWhole(arguments) || !arguments.errorText.empty())
                return 1;
            const Ended error = RunChild({u"error", u"100000"});
            if (error.errorText.size() != 100'000 || !error.output.empty())
                return 2;
            if (Texts(RunChild({u"input"}).output) != std::vector<std::string>{"0"})
                return 3;
            return RunChild({u"descriptors"}).output.empty() ? 0 : 4;
        };
        EXPECT_EQ(InAnotherHost(act), 0) << closed;
    }
}

TEST(ProcessPosix, SignalsDoNotCutAWaitShort)
{
    const auto act = [] {
        struct sigaction action = {};
        action.sa_handler = [](int) {
        };
        // Without SA_RESTART.
        sigaction(SIGUSR1, &action, nullptr);
        Child child(ChildCommand({u"input"}));
        const pthread_t waiting = pthread_self();
        std::thread disturber([&] {
            for (int i = 0; i < 50; ++i)
            {
                pthread_kill(waiting, SIGUSR1);
                usleep(1000);
            }
            child.CloseInput();
        });
        const std::optional<DWORD> code = child.WaitForExitCode();
        disturber.join();
        return code == 0U ? 0 : 1;
    };
    EXPECT_EQ(InAnotherHost(act), 0);
}

TEST(ProcessPosix, EndedChildrenAreTakenLeaveOf)
{
    const auto act = [] {
        {
            Child child(ChildCommand({u"exit", u"0"}));
            child.CloseInput();
            child.WaitForExitCode();
        }
        return waitpid(-1, nullptr, WNOHANG) == -1 && errno == ECHILD ? 0 : 1;
    };
    EXPECT_EQ(InAnotherHost(act), 0);
}

TEST(ProcessPosix, BadStandardHandlesAreRefused)
{
    std::u16string line = ChildCommand({u"exit", u"0"});
    STARTUPINFOW startup = {};
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = startup.hStdOutput = startup.hStdError = INVALID_HANDLE_VALUE;
    PROCESS_INFORMATION information = {};
    EXPECT_EQ(ErrorOf(CreateProcessW(nullptr, line.data(), nullptr, nullptr, 1, 0, nullptr, nullptr,
                                     &startup, &information)),
              ERROR_INVALID_HANDLE);
    EXPECT_EQ(information.hProcess, nullptr);
}

TEST(ProcessPosix, OtherWaysToStartAreNotSupported)
{
    const Pipe pipe = PipeToChild();
    std::u16string line = ChildCommand({u"exit", u"0"});
    STARTUPINFOW startup = {};
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = startup.hStdOutput = startup.hStdError = pipe.read.Get();
    PROCESS_INFORMATION information = {};
    SECURITY_ATTRIBUTES security = {};
    const auto errorOf = [&](LPCWSTR application, SECURITY_ATTRIBUTES* process,
                             SECURITY_ATTRIBUTES* thread, BOOL inherit, DWORD flags,
                             LPVOID environment) {
        return ErrorOf(CreateProcessW(application, line.data(), process, thread, inherit, flags,
                                      environment, nullptr, &startup, &information));
    };
    WCHAR empty[2] = {};
    EXPECT_EQ(errorOf(u"a", nullptr, nullptr, 1, 0, nullptr), ERROR_NOT_SUPPORTED);
    EXPECT_EQ(errorOf(nullptr, &security, nullptr, 1, 0, nullptr), ERROR_NOT_SUPPORTED);
    EXPECT_EQ(errorOf(nullptr, nullptr, &security, 1, 0, nullptr), ERROR_NOT_SUPPORTED);
    EXPECT_EQ(errorOf(nullptr, nullptr, nullptr, 0, 0, nullptr), ERROR_NOT_SUPPORTED);
    EXPECT_EQ(errorOf(nullptr, nullptr, nullptr, 1, 0x10, nullptr), ERROR_NOT_SUPPORTED);
    EXPECT_EQ(errorOf(nullptr, nullptr, nullptr, 1, 0, empty), ERROR_NOT_SUPPORTED);
    startup.dwFlags = 0;
    EXPECT_EQ(errorOf(nullptr, nullptr, nullptr, 1, 0, nullptr), ERROR_NOT_SUPPORTED);
}

TEST(ProcessPosix, OnlyWaitsForProcessesMayHaveALimit)
{
    const EventHandle event(CreateEventW(nullptr, 1, 0, nullptr));
    EXPECT_EQ(WaitForSingleObject(event.Get(), 1), WAIT_FAILED);
    EXPECT_EQ(GetLastError(), ERROR_NOT_SUPPORTED);
}

} // namespace
} // namespace tarnwell::test
