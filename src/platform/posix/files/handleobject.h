// Handles that aren't files: each is the address of an object.
#pragma once

#include "platform/win32.h"

#include <cerrno>

namespace tarnwell::posix
{

// Closing its handle deletes it.
class HandleObject
{
public:
    HandleObject() = default;
    HandleObject(const HandleObject&) = delete;
    HandleObject& operator=(const HandleObject&) = delete;
    virtual ~HandleObject() = default;

    // Until what it stands for has ended. 0 or an errno.
    virtual int Wait() = 0;
    // The same, but no longer than this. ETIMEDOUT if it hasn't ended by then; ENOTSUP for what can
    // only be waited for without a limit.
    virtual int WaitFor(int)
    {
        return ENOTSUP;
    }
};

// Null if `handle` isn't an object's. Addresses are even; files' handles are odd.
inline HandleObject* ObjectOf(HANDLE handle)
{
    const bool isAddress = (reinterpret_cast<DWORD_PTR>(handle) & 1) == 0;
    return isAddress ? static_cast<HandleObject*>(handle) : nullptr;
}

} // namespace tarnwell::posix
