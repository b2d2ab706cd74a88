#include "system.h"

#include <atomic>
#include <csignal>
#include <unistd.h>

namespace tarnwell::host
{

namespace
{

// Signals reach any thread.
std::atomic<bool> interrupted = false;
static_assert(std::atomic<bool>::is_always_lock_free);
struct sigaction before;

} // namespace

InterruptWatch::InterruptWatch()
{
    interrupted = false;
    struct sigaction watch = {};
    watch.sa_handler = [](int) {
        interrupted = true;
    };
    // A second one ends the program, since what is to be cancelled may wait for somebody.
    watch.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
    sigaction(SIGINT, &watch, &before);
}

InterruptWatch::~InterruptWatch()
{
    sigaction(SIGINT, &before, nullptr);
}

bool InterruptWatch::Interrupted()
{
    return interrupted;
}

void EndProgram(int exitCode)
{
    _exit(exitCode);
}

} // namespace tarnwell::host
