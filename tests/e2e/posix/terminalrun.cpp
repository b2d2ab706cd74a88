#include "e2e/posix/terminalrun.h"

#include "e2e/hostrun.h"

#include <gmock/gmock.h>

#include <csignal>
#include <cstdlib>
#include <pty.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tarnwell::test
{

TerminalRun RunOnTerminal(const std::vector<std::string>& arguments,
                          const std::function<std::string(const std::string&)>& type,
                          bool isColoured, unsigned short width)
{
    const std::string program = HostProgram().string();
    int terminal = -1;
    const winsize size{24, width, 0, 0};
    const pid_t child = forkpty(&terminal, nullptr, nullptr, &size);
    if (child == 0)
    {
        unsetenv("LC_ALL");
        setenv("LC_MESSAGES", "C", 1);
        setenv("TERM", "xterm", 1);
        setenv("NO_COLOR", isColoured ? "" : "1", 1);
        unsetenv("DISPLAY");
        unsetenv("WAYLAND_DISPLAY");
        // Whatever happens, it doesn't fill the disk.
        const rlimit enough{rlim_t{8} << 30, rlim_t{8} << 30};
        setrlimit(RLIMIT_FSIZE, &enough);
        std::vector<char*> pointers{const_cast<char*>(program.c_str())};
        for (const std::string& argument : arguments)
            pointers.push_back(const_cast<char*>(argument.c_str()));
        pointers.push_back(nullptr);
        execv(program.c_str(), pointers.data());
        _exit(127);
    }
    TerminalRun run;
    const auto typeMore = [&] {
        const std::string typed = type(run.shown);
        EXPECT_EQ(write(terminal, typed.data(), typed.size()), static_cast<ssize_t>(typed.size()));
    };
    typeMore();
    char buffer[4096];
    for (ssize_t count = 0; (count = read(terminal, buffer, sizeof buffer)) > 0;)
    {
        run.shown.append(buffer, static_cast<std::size_t>(count));
        typeMore();
    }
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    close(terminal);
    run.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return run;
}

} // namespace tarnwell::test
