#include "runner/thread.h"

#include <cstdint>

namespace tarnwell
{

namespace
{

unsigned STDMETHODCALLTYPE RunThread(void* thread)
{
    return static_cast<Thread*>(thread)->Run();
}

} // namespace

bool Thread::Start()
{
    const std::uintptr_t started = _beginthreadex(nullptr, 0, RunThread, this, 0, nullptr);
    if (started == 0)
        return false;
    static_cast<OsHandle&>(*this) = OsHandle(reinterpret_cast<HANDLE>(started));
    return true;
}

void Thread::Wait()
{
    if (!*this)
        return;
    WaitForSingleObject(Get(), INFINITE);
    Close();
}

} // namespace tarnwell
