#include "platform/posix/copy/copytarget.h"

#include "platform/posix/errors/errnotable.h"
#include "platform/posix/files/attributes.h"
#include "platform/posix/files/nativepath.h"
#include "platform/posix/files/permissions.h"
#include "platform/posix/files/removal.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace tarnwell::posix
{
namespace
{

// How many links the system follows.
constexpr int mostLinks = 40;

// Where the link at `path` leads; empty if there is none.
std::string LedTo(const std::string& path)
{
    char text[PATH_MAX];
    const ssize_t length = readlink(path.c_str(), text, sizeof text);
    if (length <= 0)
        return {};
    const std::string contained(text, static_cast<std::size_t>(length));
    return contained.front() == '/' ? contained : FolderOf(path) + '/' + contained;
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
    // Root is refused, too, though the system would let it.
    return (target.st_mode & anyWrite) == 0 ? ERROR_ACCESS_DENIED : ERROR_SUCCESS;
}

CopyTarget::~CopyTarget()
{
    struct stat made;
    if (file_ && isOurs_ && fstat(file_.Get(), &made) == 0)
        Remove(made);
}

// Through a link to nothing the system would make a file for whoever comes first, and wouldn't tell
// for whom. So links are followed here.
DWORD CopyTarget::Open(const std::string& path, const struct stat& source, bool mustBeNew)
{
    path_ = path;
    for (int links = 0; links < mostLinks; ++links)
    {
        file_ = posix::Open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NONBLOCK,
                            source.st_mode & permissionBits);
        isOurs_ = static_cast<bool>(file_);
        if (isOurs_)
            return ERROR_SUCCESS;
        if (errno != EEXIST)
            return LookupError(path_, errno);
        struct stat found;
        const bool isSeen = stat(path_.c_str(), &found) == 0;
        const int number = isSeen ? 0 : errno;
        if (mustBeNew && !(isSeen && S_ISDIR(found.st_mode)))
            return ERROR_FILE_EXISTS;
        if (isSeen)
            return OpenTaken(source, found);
        if (number != ENOENT)
            return LookupError(path_, number);
        path_ = LedTo(path_);
        // What was there has gone.
        if (path_.empty())
            return ERROR_SHARING_VIOLATION;
    }
    return ERROR_CANT_RESOLVE_FILENAME;
}

DWORD CopyTarget::OpenTaken(const struct stat& source, const struct stat& found)
{
    if (const DWORD error = CheckCopyTarget(source, found); error != ERROR_SUCCESS)
        return error;
    file_ = posix::Open(path_.c_str(), O_WRONLY | O_NONBLOCK);
    struct stat opened;
    if (!file_ || fstat(file_.Get(), &opened) != 0)
        return errno == ENOENT ? ERROR_SHARING_VIOLATION : LookupError(path_, errno);
    // The name may stand for another file by now, which nobody has checked.
    return IsSame(found, opened) ? ERROR_SUCCESS : ERROR_SHARING_VIOLATION;
}

DWORD CopyTarget::CheckPlace() const
{
    struct stat opened;
    struct stat found;
    if (fstat(file_.Get(), &opened) != 0)
        return ErrorFromErrno(errno);
    if (stat(path_.c_str(), &found) != 0)
        return errno == ENOENT ? ERROR_SHARING_VIOLATION : LookupError(path_, errno);
    return IsSame(found, opened) ? ERROR_SUCCESS : ERROR_SHARING_VIOLATION;
}

DWORD CopyTarget::Begin(const struct stat& source)
{
    if (isOurs_)
        return ERROR_SUCCESS;
    // If somebody has put another file there, that file stays. This one may live on under another
    // name.
    if (const DWORD error = CheckPlace(); error != ERROR_SUCCESS)
        return error;
    if (Restarted([&] { return ftruncate(file_.Get(), 0); }) != 0)
        return ErrorFromErrno(errno);
    isOurs_ = true;
    // Before the first byte. Some file systems keep no such bits, and those of somebody else's file
    // can't be set; the bytes are copied all the same.
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
    if (const DWORD error = CheckPlace(); error != ERROR_SUCCESS)
        return error;
    // A network's file system may tell only now that there was no room.
    if (close(file_.Detach()) == 0 || errno == EINTR)
        return ERROR_SUCCESS;
    const DWORD error = ErrorFromErrno(errno);
    Remove(made);
    return error;
}

// At the end of all links, and only if it is still the file that was written.
void CopyTarget::Remove(const struct stat& made) const
{
    char path[PATH_MAX];
    if (realpath(path_.c_str(), path) != nullptr)
        RemoveIfSame(path, made);
}

} // namespace tarnwell::posix
