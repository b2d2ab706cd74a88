// A process that was started here.
#pragma once

#include "platform/posix/files/filehandle.h"

#include <csignal>
#include <mutex>
#include <optional>
#include <sys/types.h>

namespace tarnwell::posix
{

// Can be made before the process is, so that nothing can fail once that runs.
class ChildProcess
{
public:
    ChildProcess() = default;
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    // Collects a process that has ended. One that still runs stays the host's child.
    ~ChildProcess();

    void Started(pid_t id);
    // To be called before the start: the number goes to no other process until LetGo, unless the
    // host takes the end away.
    void Keep();
    void LetGo();
    // Whether the number still is this process's, of one that was kept.
    bool HasNumber() const;
    DWORD Id() const
    {
        return static_cast<DWORD>(id_);
    }

    // Until it has ended. 0 or an errno.
    int Wait();
    // No longer than this. 0, ETIMEDOUT or another errno.
    int WaitFor(int milliseconds);
    // STILL_ACTIVE while it runs; nothing if the host took the code away.
    std::optional<DWORD> ExitCode();
    // The signal that ended it; 0 if it ended by itself.
    int EndingSignal();

private:
    // With the options of waitid. 0 or an errno.
    int Collect(int options);
    int Ask(int options, siginfo_t& end) const;

    std::mutex guard_;
    pid_t id_ = -1;
    // The system may give the number to another process, but not this.
    FileDescriptor process_;
    bool isEnded_ = false;
    bool isKept_ = false;
    std::optional<DWORD> exitCode_;
    int endingSignal_ = 0;
};

} // namespace tarnwell::posix
