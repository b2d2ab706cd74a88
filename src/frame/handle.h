// Owners of one handle of the platform.
#pragma once

#include "platform/win32.h"

#include <cstdint>
#include <utility>

namespace tarnwell
{

// `close` says whether it succeeded; `none` is the value of no handle.
template <class T, bool (*close)(T), std::intptr_t none = 0> class Handle
{
public:
    static T None()
    {
        return reinterpret_cast<T>(none);
    }
    explicit Handle(T handle = None()) : handle_(handle) {}
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    Handle(Handle&& other) noexcept : handle_(other.Detach()) {}
    Handle& operator=(Handle&& other) noexcept
    {
        std::swap(handle_, other.handle_);
        return *this;
    }
    ~Handle()
    {
        Close();
    }

    // Whether closing succeeded, as it does with nothing to close. What was held is gone in any
    // case, so that nothing is closed twice.
    bool Close()
    {
        const T old = Detach();
        return old == None() || close(old);
    }

    T Detach()
    {
        return std::exchange(handle_, None());
    }
    T Get() const
    {
        return handle_;
    }
    explicit operator bool() const
    {
        return handle_ != None();
    }

private:
    T handle_;
};

inline bool CloseObject(HANDLE handle)
{
    return CloseHandle(handle) != 0;
}

inline bool CloseFind(HANDLE handle)
{
    return FindClose(handle) != 0;
}

inline bool CloseInternet(HINTERNET handle)
{
    return InternetCloseHandle(handle) != 0;
}

inline bool CloseKey(HKEY key)
{
    return RegCloseKey(key) == ERROR_SUCCESS;
}

// A file or a find that isn't there is INVALID_HANDLE_VALUE, anything else a null pointer.
using OsHandle = Handle<HANDLE, CloseObject, -1>;
using EventHandle = Handle<HANDLE, CloseObject>;
using FindHandle = Handle<HANDLE, CloseFind, -1>;
using InternetHandle = Handle<HINTERNET, CloseInternet>;
using RegistryKey = Handle<HKEY, CloseKey>;

} // namespace tarnwell
