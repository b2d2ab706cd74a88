#include "platform/posix/files/filehandle.h"

#include "platform/posix/errors/lasterror.h"
#include "platform/posix/files/handleobject.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace tarnwell::posix
{

BOOL FailOnDescriptor(int descriptor)
{
    if (errno != EBADF)
        return FailWithErrno();
    return Fail(fcntl(descriptor, F_GETFD) == -1 ? ERROR_INVALID_HANDLE : ERROR_ACCESS_DENIED);
}

} // namespace tarnwell::posix

extern "C" BOOL CloseHandle(HANDLE handle)
{
    using namespace tarnwell::posix;
    if (HandleObject* const object = ObjectOf(handle))
    {
        delete object;
        return 1;
    }
    // The descriptor is gone also where close reports EINTR; a second try could hit another file.
    return close(DescriptorOf(handle)) == 0 || errno == EINTR ? 1 : FailWithErrno();
}
