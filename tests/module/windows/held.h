#pragma once

#include "module/localtest.h"

#include <windows.h>

namespace tarnwell::test
{

// A file or folder opened by the platform itself.
class Held
{
public:
    Held(const std::u16string& path, DWORD access, DWORD share)
        : handle_(CreateFileW(Ole(path), access, share, nullptr, OPEN_EXISTING,
                              FILE_FLAG_BACKUP_SEMANTICS, nullptr)),
          error_(handle_ == INVALID_HANDLE_VALUE ? GetLastError() : ERROR_SUCCESS)
    {
    }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;
    ~Held()
    {
        CloseHandle(handle_);
    }
    DWORD Error() const
    {
        return error_;
    }

private:
    HANDLE handle_;
    DWORD error_;
};

} // namespace tarnwell::test
