#include "platform/posix/files/removal.h"

#include "platform/posix/errors/errnotable.h"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/random.h>
#include <unistd.h>

namespace tarnwell::posix
{
namespace
{

bool IsThere(const char* path, const struct stat& wanted)
{
    struct stat found;
    return lstat(path, &found) == 0 && IsSame(found, wanted);
}

// A name in the same folder that nobody else comes to use.
bool MakeNameBeside(const char* path, char (&name)[PATH_MAX])
{
    unsigned number = 0;
    if (getrandom(&number, sizeof number, GRND_NONBLOCK) != sizeof number)
        return false;
    const char* const separator = std::strrchr(path, '/');
    const int folder = separator == nullptr ? 0 : static_cast<int>(separator + 1 - path);
    const int length = std::snprintf(name, sizeof name, "%.*s.vrl%08x.gone", folder, path, number);
    return length > 0 && length < PATH_MAX;
}

DWORD Unlink(const char* path)
{
    return unlink(path) == 0 ? ERROR_SUCCESS : ErrorFromErrno(errno);
}

bool Move(const char* from, const char* to)
{
    return renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE) == 0;
}

} // namespace

// The system removes by name only, and between a look and the removal somebody may put another file
// there. So what is looked at last has a name by then that only this call knows; if it is somebody
// else's, it gets its own name back, unless there is yet another by now.
DWORD RemoveIfSame(const char* path, const struct stat& wanted)
{
    if (!IsThere(path, wanted))
        return ERROR_SHARING_VIOLATION;
    char aside[PATH_MAX];
    // Not every file system moves without replacing. There the look above has to do.
    if (!MakeNameBeside(path, aside) || !Move(path, aside))
        return Unlink(path);
    const DWORD error = IsThere(aside, wanted) ? Unlink(aside) : ERROR_SHARING_VIOLATION;
    if (error != ERROR_SUCCESS)
        Move(aside, path);
    return error;
}

} // namespace tarnwell::posix
