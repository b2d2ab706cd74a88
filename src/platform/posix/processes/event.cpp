// Events.
#include "platform/posix/errors/lasterror.h"
#include "platform/posix/files/handleobject.h"

#include <condition_variable>
#include <mutex>
#include <new>

namespace tarnwell::posix
{
namespace
{

class EventHandle : public HandleObject
{
public:
    int Wait() override
    {
        std::unique_lock lock(guard_);
        changed_.wait(lock, [&] { return isSet_; });
        return 0;
    }
    // Wakes the waiters while the lock is held: one of them may delete the event at once.
    void Set()
    {
        const std::lock_guard lock(guard_);
        isSet_ = true;
        changed_.notify_all();
    }

private:
    std::mutex guard_;
    std::condition_variable changed_;
    bool isSet_ = false;
};

HANDLE NoEvent(DWORD error)
{
    Fail(error);
    return nullptr;
}

} // namespace
} // namespace tarnwell::posix

using namespace tarnwell::posix;

extern "C" HANDLE CreateEventW(SECURITY_ATTRIBUTES* security, BOOL manualReset, BOOL initialState,
                               LPCWSTR name)
{
    if (security != nullptr || !manualReset || initialState || name != nullptr)
        return NoEvent(ERROR_NOT_SUPPORTED);
    HandleObject* const event = new (std::nothrow) EventHandle;
    return event == nullptr ? NoEvent(ERROR_NOT_ENOUGH_MEMORY) : event;
}

extern "C" BOOL SetEvent(HANDLE event)
{
    auto* const handle = dynamic_cast<EventHandle*>(ObjectOf(event));
    if (handle == nullptr)
        return Fail(ERROR_INVALID_HANDLE);
    handle->Set();
    return 1;
}
