// _beginthreadex.
#include "platform/posix/errors/errnotable.h"
#include "platform/posix/errors/lasterror.h"
#include "platform/posix/files/handleobject.h"

#include <csignal>
#include <memory>
#include <mutex>
#include <new>
#include <pthread.h>

namespace tarnwell::posix
{
namespace
{

struct Task
{
    unsigned (*start)(void*);
    void* argument;
};

// An exception that leaves the task ends the host, as it does on Windows.
void* RunTask(void* given) noexcept
{
    const std::unique_ptr<Task> owned(static_cast<Task*>(given));
    const Task task = *owned;
    task.start(task.argument);
    return nullptr;
}

class ThreadHandle : public HandleObject
{
public:
    // A thread runs on without its handle.
    ~ThreadHandle() override
    {
        if (isRunning_)
            pthread_detach(thread_);
    }

    // 0 or an errno.
    int Start(std::unique_ptr<Task> task)
    {
        const int number = pthread_create(&thread_, nullptr, RunTask, task.get());
        isRunning_ = number == 0;
        if (isRunning_)
            static_cast<void>(task.release());
        return number;
    }

    int Wait() override
    {
        const std::lock_guard lock(guard_);
        const int number = isRunning_ ? pthread_join(thread_, nullptr) : 0;
        isRunning_ = isRunning_ && number != 0;
        return number;
    }

private:
    std::mutex guard_;
    pthread_t thread_ = {};
    bool isRunning_ = false;
};

// While it lives, the calling thread, and each thread that it makes, gets no signals but those for
// a fault of its own.
class SignalsBlocked
{
public:
    SignalsBlocked()
    {
        sigset_t blocked;
        sigfillset(&blocked);
        for (const int fault : {SIGBUS, SIGFPE, SIGILL, SIGSEGV, SIGSYS, SIGTRAP})
            sigdelset(&blocked, fault);
        pthread_sigmask(SIG_BLOCK, &blocked, &before_);
    }
    SignalsBlocked(const SignalsBlocked&) = delete;
    SignalsBlocked& operator=(const SignalsBlocked&) = delete;
    ~SignalsBlocked()
    {
        pthread_sigmask(SIG_SETMASK, &before_, nullptr);
    }

private:
    sigset_t before_;
};

std::uintptr_t StartThread(const Task& task)
{
    auto thread = std::make_unique<ThreadHandle>();
    auto owned = std::make_unique<Task>(task);
    const SignalsBlocked blocked;
    const int number = thread->Start(std::move(owned));
    if (number != 0)
    {
        Fail(ErrorFromErrno(number));
        return 0;
    }
    HandleObject* const handle = thread.release();
    return reinterpret_cast<std::uintptr_t>(handle);
}

} // namespace
} // namespace tarnwell::posix

extern "C" std::uintptr_t _beginthreadex(void* security, unsigned stackSize,
                                         unsigned (*start)(void*), void* argument, unsigned flags,
                                         unsigned* id)
{
    using namespace tarnwell::posix;
    DWORD error = ERROR_NOT_SUPPORTED;
    try
    {
        const bool isPlainThread =
            security == nullptr && stackSize == 0 && flags == 0 && id == nullptr;
        if (isPlainThread)
            return StartThread({start, argument});
    }
    catch (const std::bad_alloc&)
    {
        error = ERROR_NOT_ENOUGH_MEMORY;
    }
    Fail(error);
    return 0;
}
