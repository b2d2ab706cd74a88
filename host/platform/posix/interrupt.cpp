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
    watch.sa_flags = SA_RESTART;
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
