#include "platform/child/commands.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <dirent.h>
#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace tarnwell::test
{
namespace
{

// Other than the standard ones.
std::vector<std::string> OpenDescriptors()
{
    std::vector<std::string> found;
    DIR* const stream = opendir("/proc/self/fd");
    while (const dirent* const entry = readdir(stream))
    {
        const bool isNumber = entry->d_name[0] != '.';
        const int descriptor = isNumber ? std::stoi(entry->d_name) : 0;
        if (descriptor > STDERR_FILENO && descriptor != dirfd(stream))
            found.emplace_back(entry->d_name);
    }
    closedir(stream);
    return found;
}

// Those that are blocked or, of the ones that hosts like to change, ignored.
std::vector<std::string> OddSignals()
{
    std::vector<std::string> found;
    sigset_t blocked;
    sigprocmask(SIG_BLOCK, nullptr, &blocked);
    for (int signal = 1; signal < NSIG; ++signal)
    {
        if (sigismember(&blocked, signal) == 1)
            found.push_back("blocked " + std::to_string(signal));
    }
    for (const int signal : {SIGPIPE, SIGCHLD, SIGINT})
    {
        struct sigaction action;
        sigaction(signal, nullptr, &action);
        if (action.sa_handler != SIG_DFL)
            found.push_back("handled " + std::to_string(signal));
    }
    return found;
}

void EndBySignal(int number)
{
    std::fputs("last words", stderr);
    raise(number);
}

// Leaves a process that has the streams for so long, writes to the error stream and closes them.
// It then stays until there is a file `told`, and writes to the file `ended` whether there was.
void LeaveAnHeir(int milliseconds, const std::string& told, const std::string& ended)
{
    const pid_t parent = getpid();
    if (fork() != 0)
        return;
    while (getppid() == parent)
        usleep(1000);
    usleep(static_cast<useconds_t>(milliseconds) * 1000);
    std::fputs("the heir's words", stderr);
    for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        close(standard);
    const bool isTold = Await(ended + ".started", told);
    std::ofstream(ended + ".new") << (isTold ? "told" : "not told");
    std::filesystem::rename(ended + ".new", ended);
}

} // namespace
} // namespace tarnwell::test

int main(int count, char** texts)
{
    using namespace tarnwell::test;
    const std::vector<std::string> arguments(texts + 1, texts + count);
    const std::string command = arguments.empty() ? "" : arguments[0];
    std::vector<std::string> environment;
    for (char** entry = environ; *entry != nullptr; ++entry)
        environment.emplace_back(*entry);

    if (command == "descriptors")
        Print(OpenDescriptors());
    else if (command == "signals")
        Print(OddSignals());
    else if (command == "kill")
        EndBySignal(SIGKILL);
    else if (command == "signal" && arguments.size() == 2)
        EndBySignal(std::stoi(arguments[1]));
    else if (command == "heir" && arguments.size() == 4)
        LeaveAnHeir(std::stoi(arguments[1]), arguments[2], arguments[3]);
    else
        return RunCommand(arguments, environment);
    return 0;
}
