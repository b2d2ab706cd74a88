#include "platform/posix/processes/pipesignal.h"

#include <cerrno>
#include <ctime>

namespace tarnwell::posix
{
namespace
{

sigset_t PipeSignal()
{
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGPIPE);
    return set;
}

} // namespace

NoPipeSignal::NoPipeSignal()
{
    const sigset_t set = PipeSignal();
    sigset_t before;
    pthread_sigmask(SIG_BLOCK, &set, &before);
    wasBlocked_ = sigismember(&before, SIGPIPE) == 1;
}

NoPipeSignal::~NoPipeSignal()
{
    if (wasBlocked_)
        return;
    const int number = errno;
    const sigset_t set = PipeSignal();
    // The signal is sent to this thread, so it has arrived by now if it comes at all.
    constexpr timespec atOnce = {};
    if (number == EPIPE)
        sigtimedwait(&set, nullptr, &atOnce);
    pthread_sigmask(SIG_UNBLOCK, &set, nullptr);
    errno = number;
}

} // namespace tarnwell::posix
