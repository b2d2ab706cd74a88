#include "runner/thread.h"

#include <cstdint>

namespace tarnwell
{

unsigned STDMETHODCALLTYPE Thread::RunToEnd(void* thread)
{
    auto* const self = static_cast<Thread*>(thread);
    const unsigned value = self->Run();
    self->input_->Close();
    self->hasEnded_ = true;
    self->hasEnded_.notify_all();
    return value;
}

void Thread::Start(OsHandle& input)
{
    input_ = &input;
    const std::uintptr_t started = _beginthreadex(nullptr, 0, RunToEnd, this, 0, nullptr);
    if (started == 0)
        input.Close();
    else
        static_cast<OsHandle&>(*this) = OsHandle(reinterpret_cast<HANDLE>(started));
}

void Thread::Wait()
{
    if (!*this)
        return;
    // Where the system refuses to wait, the thread must not outlive what it works on all the same.
    if (WaitForSingleObject(Get(), INFINITE) != WAIT_OBJECT_0)
        hasEnded_.wait(false);
    Close();
}

} // namespace tarnwell
