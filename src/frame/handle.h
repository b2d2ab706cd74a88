// Owners of one handle of the platform.
#pragma once

#include "platform/win32.h"

#include <utility>

namespace tarnwell
{

// `Traits` has `Invalid()`, the value of no handle, and `Close(handle)`, whether that succeeded.
template <class T, class Traits> class Handle
{
public:
    explicit Handle(T handle = Traits::Invalid()) : handle_(handle) {}
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    Handle(Handle&& other) noexcept : handle_(other.Detach()) {}
    Handle& operator=(Handle&& other) noexcept
    {
        std::swap(handle_, other.handle_);
        return *this;
    }
    virtual ~Handle()
    {
        Close();
    }

    // Whether closing succeeded, as it does with nothing to close. What was held is gone in any
    // case, so that nothing is closed twice.
    bool Close()
    {
        const T old = Detach();
        return old == Traits::Invalid() || Traits::Close(old);
    }

    T Detach()
    {
        return std::exchange(handle_, Traits::Invalid());
    }
    T Get() const
    {
        return handle_;
    }
    explicit operator bool() const
    {
        return handle_ != Traits::Invalid();
    }

private:
    T handle_;
};

struct OsHandleTraits
{
    static HANDLE Invalid()
    {
        return INVALID_HANDLE_VALUE;
    }
    static bool Close(HANDLE handle)
    {
        return CloseHandle(handle) != 0;
    }
};

using OsHandle = Handle<HANDLE, OsHandleTraits>;

struct EventHandleTraits
{
    static HANDLE Invalid()
    {
        return nullptr;
    }
    static bool Close(HANDLE handle)
    {
        return CloseHandle(handle) != 0;
    }
};

using EventHandle = Handle<HANDLE, EventHandleTraits>;

struct FindHandleTraits
{
    static HANDLE Invalid()
    {
        return INVALID_HANDLE_VALUE;
    }
    static bool Close(HANDLE handle)
    {
        return FindClose(handle) != 0;
    }
};

using FindHandle = Handle<HANDLE, FindHandleTraits>;

struct InternetHandleTraits
{
    static HINTERNET Invalid()
    {
        return nullptr;
    }
    static bool Close(HINTERNET handle)
    {
        return InternetCloseHandle(handle) != 0;
    }
};

using InternetHandle = Handle<HINTERNET, InternetHandleTraits>;

struct RegistryKeyTraits
{
    static HKEY Invalid()
    {
        return nullptr;
    }
    static bool Close(HKEY key)
    {
        return RegCloseKey(key) == ERROR_SUCCESS;
    }
};

using RegistryKey = Handle<HKEY, RegistryKeyTraits>;

} // namespace tarnwell
