// What each thread keeps, and what goes with it.
#pragma once

#include <pthread.h>

namespace tarnwell::posix
{

// Not a thread_local with a destructor: at a thread's first use of one the C library ends the
// process if it has no memory to note it down.
class ThreadSlot
{
public:
    // `release` gets what a thread has at its end, unless that is null.
    explicit ThreadSlot(void (*release)(void*)) : isMade_(pthread_key_create(&key_, release) == 0)
    {
    }
    ThreadSlot(const ThreadSlot&) = delete;
    ThreadSlot& operator=(const ThreadSlot&) = delete;

    void* Get() const
    {
        return isMade_ ? pthread_getspecific(key_) : nullptr;
    }
    // What was there is the caller's. False, and nothing is changed, if memory is short.
    bool Set(void* object) const
    {
        // Nothing may need no room.
        if (object == nullptr && Get() == nullptr)
            return true;
        return isMade_ && pthread_setspecific(key_, object) == 0;
    }

private:
    pthread_key_t key_ = {};
    bool isMade_;
};

} // namespace tarnwell::posix
