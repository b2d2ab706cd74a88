// A thread that lives inside one run of a client and reads what that writes.
#pragma once

#include "frame/handle.h"

#include <atomic>
#include <memory>

namespace tarnwell
{

// Owns the thread's handle. Nothing may leave `Run`: there is nobody to tell.
class Thread : public OsHandle
{
public:
    virtual unsigned Run() noexcept
    {
        return 0;
    }

    // Starts the thread, which closes `input` behind its run; so does this if the system has no
    // thread to give. Whoever writes to the other end never waits for a reader that is gone.
    // Both objects must stay until Wait has returned.
    void Start(OsHandle& input);

    // Waits without a time limit for a thread that was started, and closes its handle.
    void Wait();

private:
    static unsigned STDMETHODCALLTYPE RunToEnd(void* thread);

    OsHandle* input_ = nullptr; // the caller's
    std::atomic<bool> hasEnded_ = false;
};

} // namespace tarnwell
