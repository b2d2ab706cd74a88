#include "platform/posix/copy/copytarget.h"

#include "platform/posix/errors/errnotable.h"
#include "platform/posix/files/attributes.h"
#include "platform/posix/files/nativepath.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <unistd.h>

namespace tarnwell::posix
{
namespace
{

constexpr mode_t permissionBits = 0777;

bool IsSame(const struct stat& one, const struct stat& other)
{
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

FileDescriptor OpenForWriting(const std::string& path, int flags, mode_t mode)
{
    int descriptor = -1;
    do
        descriptor = open(path.c_str(),
                          O_WRONLY | O_CREAT | O_CLOEXEC | O_NONBLOCK | O_NOCTTY | flags, mode);
    while (descriptor < 0 && errno == EINTR);
    return FileDescriptor(descriptor);
}

} // namespace

DWORD CheckCopyTarget(const struct stat& source, const struct stat& target)
{
    if (S_ISDIR(target.st_mode))
        return ERROR_ACCESS_DENIED;
    if (IsSame(source, target))
        return ERROR_SHARING_VIOLATION;
    if (!S_ISREG(target.st_mode))
        return ERROR_NOT_SUPPORTED;
    // Also for root, to whom the system forbids nothing.
    return (target.st_mode & anyWrite) == 0 ? ERROR_ACCESS_DENIED : ERROR_SUCCESS;
}

CopyTarget::~CopyTarget()
{
    struct stat made;
    if (file_ && isOurs_ && fstat(file_.Get(), &made) == 0)
        Remove(made);
}

DWORD CopyTarget::Open(const std::string& path, const struct stat& source, bool mustBeNew)
{
    path_ = path;
    file_ = OpenForWriting(path, O_EXCL, source.st_mode & permissionBits);
    isOurs_ = static_cast<bool>(file_);
    if (isOurs_)
        return ERROR_SUCCESS;
    return errno == EEXIST ? OpenTaken(source, mustBeNew) : LookupError(path, errno);
}

// What has the name already may also be a link to what isn't there yet.
DWORD CopyTarget::OpenTaken(const struct stat& source, bool mustBeNew)
{
    struct stat found;
    isOurs_ = stat(path_.c_str(), &found) != 0;
    const DWORD error = isOurs_ ? ERROR_SUCCESS : CheckCopyTarget(source, found);
    const bool isFolder = !isOurs_ && S_ISDIR(found.st_mode);
    if (mustBeNew && !isFolder)
        return ERROR_FILE_EXISTS;
    if (error != ERROR_SUCCESS)
        return error;
    file_ = OpenForWriting(path_, 0, source.st_mode & permissionBits);
    if (!file_)
        return LookupError(path_, errno);
    if (isOurs_)
        return ERROR_SUCCESS;
    // The name may stand for another file by now.
    return fstat(file_.Get(), &found) == 0 ? CheckCopyTarget(source, found) : ErrorFromErrno(errno);
}

DWORD CopyTarget::Begin(const struct stat& source)
{
    int result = 0;
    do
        result = isOurs_ ? 0 : ftruncate(file_.Get(), 0);
    while (result != 0 && errno == EINTR);
    if (result != 0)
        return ErrorFromErrno(errno);
    isOurs_ = true;
    // Ahead of the first byte. Not every file system keeps such bits, and of somebody else's file
    // they can't be set; that doesn't keep the bytes from being copied.
    static_cast<void>(fchmod(file_.Get(), source.st_mode & permissionBits));
    return ERROR_SUCCESS;
}

DWORD CopyTarget::Finish(const struct stat& source)
{
    struct stat made;
    if (fstat(file_.Get(), &made) != 0)
        return ErrorFromErrno(errno);
    const timespec times[] = {{0, UTIME_OMIT}, source.st_mtim};
    // As with the permissions.
    static_cast<void>(futimens(file_.Get(), times));
    // A network's file system may tell only now that there was no room.
    if (close(file_.Detach()) == 0 || errno == EINTR)
        return ERROR_SUCCESS;
    const DWORD error = ErrorFromErrno(errno);
    Remove(made);
    return error;
}

// Behind all links, and only if it is still the file that was written.
void CopyTarget::Remove(const struct stat& made) const
{
    const std::unique_ptr<char, decltype(&std::free)> path(realpath(path_.c_str(), nullptr),
                                                           &std::free);
    struct stat found;
    if (path && lstat(path.get(), &found) == 0 && IsSame(made, found))
        unlink(path.get());
}

} // namespace tarnwell::posix
