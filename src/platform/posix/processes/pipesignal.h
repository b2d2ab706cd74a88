// Writing where nobody may be reading.
#pragma once

#include <csignal>

namespace tarnwell::posix
{

// While it lives, a write of this thread to a pipe without a reader gives EPIPE only. The signal
// that comes with it would end a host that isn't prepared for it.
class NoPipeSignal
{
public:
    NoPipeSignal();
    NoPipeSignal(const NoPipeSignal&) = delete;
    NoPipeSignal& operator=(const NoPipeSignal&) = delete;
    // Leaves errno as it is.
    ~NoPipeSignal();

private:
    // The host may have blocked it, and then may have one pending that is its own.
    bool wasBlocked_;
};

} // namespace tarnwell::posix
