#include "platform/posix/errors/lasterror.h"

#include "platform/posix/errors/errnotable.h"

#include <cerrno>

namespace
{
// errno can't hold it: the C library changes errno in calls that succeed. With this model every
// thread has room for it from its start, so that a thread's first failure needs no memory.
[[gnu::tls_model("initial-exec")]] thread_local DWORD lastError = ERROR_SUCCESS;
} // namespace

extern "C" DWORD GetLastError()
{
    return lastError;
}

extern "C" void SetLastError(DWORD error)
{
    lastError = error;
}

namespace tarnwell::posix
{

BOOL Fail(DWORD error)
{
    lastError = error;
    return 0;
}

BOOL FailWithErrno()
{
    return Fail(ErrorFromErrno(errno));
}

} // namespace tarnwell::posix
