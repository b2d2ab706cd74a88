#include "system.h"

#include <csignal>

namespace tarnwell::host
{

namespace
{

volatile std::sig_atomic_t interrupted = 0;
struct sigaction before;

} // namespace

InterruptWatch::InterruptWatch()
{
    interrupted = 0;
    struct sigaction watch = {};
    watch.sa_handler = [](int) {
        interrupted = 1;
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
    return interrupted != 0;
}

} // namespace tarnwell::host
