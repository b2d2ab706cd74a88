// A thread that lives inside one run of a client.
#pragma once

#include "frame/handle.h"

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

    // Starts the thread; false if the system can't. The object must stay until Wait has returned.
    bool Start();

    // Waits without a time limit for a thread that was started, and closes its handle.
    void Wait();
};

} // namespace tarnwell
