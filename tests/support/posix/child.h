// Processes of a test's own.
#pragma once

#include <filesystem>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace tarnwell::test
{

// What a child says of an outcome.
constexpr int asExpected = 0;
constexpr int otherwise = 1;

// The exit code of a child that runs `body` and exits with what it gives; -1 if the child ended
// otherwise. The child has a session of its own, and so no terminal.
template <class Body> int ExitCodeOfChild(Body body)
{
    const pid_t child = fork();
    if (child == 0)
    {
        setsid();
        _exit(body());
    }
    int status = 0;
    const bool ended = waitpid(child, &status, 0) == child;
    return ended && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// Until there is such a file, for which another process takes care.
inline void WaitForFile(const std::u16string& path)
{
    while (!std::filesystem::exists(std::filesystem::path(path)))
        usleep(1000);
}

} // namespace tarnwell::test
