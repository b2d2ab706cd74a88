// CreatePipe and SetHandleInformation.
#include "platform/posix/errors/lasterror.h"
#include "platform/posix/files/filehandle.h"
#include "platform/posix/files/handleobject.h"

#include <fcntl.h>
#include <unistd.h>

using namespace tarnwell::posix;

extern "C" BOOL CreatePipe(HANDLE* read, HANDLE* write, SECURITY_ATTRIBUTES* security, DWORD)
{
    if (!IsPlain(security))
        return Fail(ERROR_NOT_SUPPORTED);
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        return FailWithErrno();
    *read = HandleOf(ends[0], true);
    *write = HandleOf(ends[1], true);
    return 1;
}

extern "C" BOOL SetHandleInformation(HANDLE handle, DWORD mask, DWORD flags)
{
    if (mask != HANDLE_FLAG_INHERIT || (flags & ~mask) != 0)
        return Fail(ERROR_NOT_SUPPORTED);
    if (ObjectOf(handle) != nullptr || fcntl(DescriptorOf(handle), F_GETFD) != -1)
        return 1;
    return Fail(ERROR_INVALID_HANDLE);
}
