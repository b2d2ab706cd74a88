#include "platform/posix/errors/errnotable.h"

#include <cerrno>

namespace tarnwell::posix
{
namespace
{

struct Row
{
    int number;
    DWORD error;
};

// Read from both sides, the first row that fits counts. A row whose errno or code stands further
// up as well is there for the other side only.
constexpr Row rows[] = {
    {ENOENT, ERROR_FILE_NOT_FOUND},
    {ENOENT, ERROR_PATH_NOT_FOUND},
    {ENOTDIR, ERROR_PATH_NOT_FOUND},
    {ENOTDIR, ERROR_DIRECTORY},
    {EMFILE, ERROR_TOO_MANY_OPEN_FILES},
    {ENFILE, ERROR_TOO_MANY_OPEN_FILES},
    {EACCES, ERROR_ACCESS_DENIED},
    {EPERM, ERROR_ACCESS_DENIED},
    {EISDIR, ERROR_ACCESS_DENIED},
    {EBADF, ERROR_INVALID_HANDLE},
    {ENOMEM, ERROR_NOT_ENOUGH_MEMORY},
    {ENOMEM, ERROR_OUTOFMEMORY},
    {EXDEV, ERROR_NOT_SAME_DEVICE},
    {EROFS, ERROR_WRITE_PROTECT},
    {ENXIO, ERROR_NOT_READY},
    {ENODEV, ERROR_NOT_READY},
    {EAGAIN, ERROR_NO_SYSTEM_RESOURCES},
    {EBUSY, ERROR_BUSY},
    {EBUSY, ERROR_SHARING_VIOLATION},
    {ETXTBSY, ERROR_SHARING_VIOLATION},
    {EOPNOTSUPP, ERROR_NOT_SUPPORTED},
    {ENOSYS, ERROR_CALL_NOT_IMPLEMENTED},
    {EEXIST, ERROR_FILE_EXISTS},
    {EEXIST, ERROR_ALREADY_EXISTS},
    {EINVAL, ERROR_INVALID_PARAMETER},
    {EINVAL, ERROR_NEGATIVE_SEEK},
    {ESPIPE, ERROR_SEEK_ON_DEVICE},
    {EPIPE, ERROR_BROKEN_PIPE},
    {ENOSPC, ERROR_DISK_FULL},
    {EDQUOT, ERROR_DISK_QUOTA_EXCEEDED},
    {EFBIG, ERROR_FILE_TOO_LARGE},
    {EOVERFLOW, ERROR_FILE_TOO_LARGE},
    {EILSEQ, ERROR_INVALID_NAME},
    {ENOTEMPTY, ERROR_DIR_NOT_EMPTY},
    {ENAMETOOLONG, ERROR_FILENAME_EXCED_RANGE},
    {E2BIG, ERROR_FILENAME_EXCED_RANGE},
    {ENOEXEC, ERROR_BAD_EXE_FORMAT},
    {ECHILD, ERROR_WAIT_NO_CHILDREN},
    {EIO, ERROR_IO_DEVICE},
    {EIO, ERROR_GEN_FAILURE},
    {EMLINK, ERROR_TOO_MANY_LINKS},
    {ECANCELED, ERROR_CANCELLED},
    {ECANCELED, ERROR_REQUEST_ABORTED},
    {ELOOP, ERROR_CANT_RESOLVE_FILENAME},
};

} // namespace

DWORD ErrorFromErrno(int number)
{
    for (const Row& row : rows)
    {
        if (row.number == number)
            return row.error;
    }
    return ERROR_GEN_FAILURE;
}

int ErrnoFromError(DWORD error)
{
    for (const Row& row : rows)
    {
        if (row.error == error)
            return row.number;
    }
    return 0;
}

} // namespace tarnwell::posix
