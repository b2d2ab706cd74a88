// File handles: the descriptor itself, written into the pointer, and whether it is a pipe's. No
// table and no lock stands between an operation and the file.
#pragma once

#include "platform/posix/files/descriptor.h"
#include "platform/win32.h"

#include <climits>

namespace tarnwell::posix
{

// Odd, so that it is neither null nor the address of a handle that is an object.
inline HANDLE HandleOf(int descriptor, bool isPipe)
{
    const DWORD_PTR marks = isPipe ? 3 : 1;
    return reinterpret_cast<HANDLE>((static_cast<DWORD_PTR>(descriptor) << 2) | marks);
}

// -1 if `handle` can't be a file's; the system then answers EBADF.
inline int DescriptorOf(HANDLE handle)
{
    const DWORD_PTR value = reinterpret_cast<DWORD_PTR>(handle);
    const bool isFile = (value & 1) != 0 && (value >> 2) <= INT_MAX;
    return isFile ? static_cast<int>(value >> 2) : -1;
}

inline bool IsPipe(HANDLE handle)
{
    return (reinterpret_cast<DWORD_PTR>(handle) & 3) == 3;
}

// Without a descriptor, which has no meaning here.
inline bool IsPlain(const SECURITY_ATTRIBUTES* security)
{
    return security == nullptr || security->lpSecurityDescriptor == nullptr;
}

// Sets the last error for a call on `descriptor` that failed. EBADF is the system's answer also
// where an open file lacks the access: that is ERROR_ACCESS_DENIED.
BOOL FailOnDescriptor(int descriptor);

} // namespace tarnwell::posix
