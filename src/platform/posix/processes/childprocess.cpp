#include "platform/posix/processes/childprocess.h"

#include <algorithm>
#include <cerrno>
#include <poll.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tarnwell::posix
{
namespace
{

// As a shell does it.
constexpr DWORD endedBySignal = 128;

DWORD ExitCodeOf(const siginfo_t& end)
{
    const DWORD status = static_cast<DWORD>(end.si_status);
    return end.si_code == CLD_EXITED ? status : endedBySignal + status;
}

} // namespace

ChildProcess::~ChildProcess()
{
    if (id_ >= 0)
        Collect(WEXITED | WNOHANG);
}

void ChildProcess::Started(pid_t id)
{
    id_ = id;
    // By the system call's number: some releases of the C library declare the function for C only.
    process_ = FileDescriptor(static_cast<int>(syscall(SYS_pidfd_open, id, 0)));
}

void ChildProcess::Keep()
{
    isKept_ = true;
}

void ChildProcess::LetGo()
{
    const std::lock_guard lock(guard_);
    isKept_ = false;
    siginfo_t end = {};
    // What the host has taken away may be another child's number.
    if (exitCode_)
        Ask(WEXITED | WNOHANG, end);
}

bool ChildProcess::HasNumber() const
{
    siginfo_t end = {};
    return Ask(WEXITED | WNOHANG | WNOWAIT, end) == 0;
}

int ChildProcess::Wait()
{
    return Collect(WEXITED);
}

int ChildProcess::WaitFor(int milliseconds)
{
    // Without a descriptor of the process, looking again and again must do.
    constexpr int pause = 5; // milliseconds
    pollfd waited{process_.Get(), POLLIN, 0};
    const int result =
        process_ ? poll(&waited, 1, milliseconds) : poll(nullptr, 0, std::min(milliseconds, pause));
    if (result < 0 && errno != EINTR)
        return errno;
    const int number = Collect(WEXITED | WNOHANG);
    if (number != 0)
        return number;
    const std::lock_guard lock(guard_);
    return isEnded_ ? 0 : ETIMEDOUT;
}

std::optional<DWORD> ChildProcess::ExitCode()
{
    Collect(WEXITED | WNOHANG);
    const std::lock_guard lock(guard_);
    return isEnded_ ? exitCode_ : STILL_ACTIVE;
}

int ChildProcess::EndingSignal()
{
    Collect(WEXITED | WNOHANG);
    const std::lock_guard lock(guard_);
    return endingSignal_;
}

int ChildProcess::Collect(int options)
{
    const std::lock_guard lock(guard_);
    if (isEnded_)
        return 0;
    if (isKept_)
        options |= WNOWAIT;
    siginfo_t end = {};
    const int number = Ask(options, end);
    // If the host ignores or collects its children's ends, this one has ended when it can't be
    // found any more.
    const bool isTakenAway = number == ECHILD;
    if (number != 0 && !isTakenAway)
        return number;
    isEnded_ = isTakenAway || end.si_pid != 0;
    if (isEnded_ && !isTakenAway)
    {
        exitCode_ = ExitCodeOf(end);
        endingSignal_ = end.si_code == CLD_EXITED ? 0 : end.si_status;
    }
    return 0;
}

int ChildProcess::Ask(int options, siginfo_t& end) const
{
    const int result = Restarted([&] {
        return process_ ? waitid(P_PIDFD, static_cast<id_t>(process_.Get()), &end, options)
                        : waitid(P_PID, static_cast<id_t>(id_), &end, options);
    });
    return result == 0 ? 0 : errno;
}

} // namespace tarnwell::posix
