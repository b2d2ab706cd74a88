// CreateFileW.
#include "platform/posix/errors/errnotable.h"
#include "platform/posix/errors/lasterror.h"
#include "platform/posix/files/filehandle.h"
#include "platform/posix/files/nativepath.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tarnwell::posix
{
namespace
{

// Listing a folder is reading it.
constexpr DWORD readAccess = GENERIC_READ | FILE_LIST_DIRECTORY;
constexpr DWORD supportedAccess =
    readAccess | GENERIC_WRITE | FILE_READ_ATTRIBUTES | FILE_WRITE_ATTRIBUTES;
constexpr DWORD supportedFlags = FILE_ATTRIBUTE_NORMAL | FILE_ATTRIBUTE_TEMPORARY |
                                 FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_DELETE_ON_CLOSE;

// By disposition; there is none with the number 0.
constexpr int dispositionFlags[] = {0, O_CREAT | O_EXCL, O_CREAT | O_TRUNC, 0, O_CREAT, O_TRUNC};

struct Request
{
    DWORD access;
    DWORD disposition;
    DWORD flags;

    bool Has(DWORD flag) const
    {
        return (flags & flag) != 0;
    }
};

// ERROR_SUCCESS, or why there is no such way to open a file.
DWORD CheckRequest(const Request& request)
{
    if ((request.access & ~supportedAccess) != 0 || (request.flags & ~supportedFlags) != 0)
        return ERROR_NOT_SUPPORTED;
    if (request.disposition < CREATE_NEW || request.disposition > TRUNCATE_EXISTING)
        return ERROR_INVALID_PARAMETER;
    if (request.disposition == TRUNCATE_EXISTING && (request.access & GENERIC_WRITE) == 0)
        return ERROR_INVALID_PARAMETER;
    return ERROR_SUCCESS;
}

int AccessFlags(const Request& request)
{
    const bool reads = (request.access & readAccess) != 0;
    if ((request.access & GENERIC_WRITE) != 0)
        return reads ? O_RDWR : O_WRONLY;
    // Whoever only wants the times needs no permission to read.
    return !reads && request.disposition == OPEN_EXISTING ? O_PATH : O_RDONLY;
}

int OpenFlags(const Request& request)
{
    int flags = O_NONBLOCK | AccessFlags(request) | dispositionFlags[request.disposition];
    // A file that deletes itself is never reached through a link that somebody put there.
    if (request.Has(FILE_FLAG_DELETE_ON_CLOSE))
        flags |= O_NOFOLLOW;
    return flags;
}

// With this flag a file is only looked at: a folder's contents are listed by other means.
bool IsLookup(const Request& request)
{
    return request.Has(FILE_FLAG_BACKUP_SEMANTICS) && request.disposition == OPEN_EXISTING;
}

bool IsLink(const std::string& path)
{
    struct stat entry;
    return lstat(path.c_str(), &entry) == 0 && S_ISLNK(entry.st_mode);
}

// A lookup finds a link without a target as itself, for its times.
FileDescriptor OpenDanglingLink(const std::string& path, const Request& request)
{
    const int number = errno;
    FileDescriptor link;
    if (IsLookup(request) && IsDangling(number) && IsLink(path))
        link = posix::Open(path.c_str(), O_PATH | O_NOFOLLOW);
    errno = number;
    return link;
}

// Opens for reading the entry that was looked at, not the one that has its name by now.
FileDescriptor Reopened(const FileDescriptor& seen, const std::string& path)
{
    char same[32];
    std::snprintf(same, sizeof same, "/proc/self/fd/%d", seen.Get());
    FileDescriptor file = posix::Open(same, O_RDONLY | O_NONBLOCK);
    const bool isHidden = !file && errno == ENOENT;
    return isHidden ? posix::Open(path.c_str(), O_RDONLY | O_NONBLOCK) : std::move(file);
}

// Opening a pipe or a device would be noticed at its other end. It is only looked at, which tells
// all there is to know.
FileDescriptor OpenToLook(const std::string& path)
{
    FileDescriptor seen = posix::Open(path.c_str(), O_PATH);
    struct stat entry;
    if (!seen || fstat(seen.Get(), &entry) != 0)
        return {};
    const bool isSafe = S_ISREG(entry.st_mode) || S_ISDIR(entry.st_mode);
    return isSafe ? Reopened(seen, path) : std::move(seen);
}

FileDescriptor OpenAsAsked(const std::string& path, const Request& request)
{
    const bool isPrivate =
        request.Has(FILE_FLAG_DELETE_ON_CLOSE) || request.Has(FILE_ATTRIBUTE_TEMPORARY);
    FileDescriptor file =
        IsLookup(request) && AccessFlags(request) == O_RDONLY
            ? OpenToLook(path)
            : posix::Open(path.c_str(), OpenFlags(request), isPrivate ? 0600 : 0666);
    return file ? std::move(file) : OpenDanglingLink(path, request);
}

// Opening a pipe or a terminal must not wait, and neither must a lookup; the transfers of an opened
// stream do wait, as a short count would mean the end of the file.
void LetTransfersWait(int descriptor, const Request& request)
{
    const int flags = fcntl(descriptor, F_GETFL);
    if (!request.Has(FILE_FLAG_BACKUP_SEMANTICS) && (flags & O_PATH) == 0)
        fcntl(descriptor, F_SETFL, flags & ~O_NONBLOCK);
}

// ERROR_SUCCESS, or why the open file may not be had. The system opens folders for reading.
DWORD CheckOpened(int descriptor, const Request& request, struct stat& entry)
{
    if (fstat(descriptor, &entry) != 0)
        return ErrorFromErrno(errno);
    if (!S_ISDIR(entry.st_mode))
        return ERROR_SUCCESS;
    if (!request.Has(FILE_FLAG_BACKUP_SEMANTICS))
        return ERROR_ACCESS_DENIED;
    return request.Has(FILE_FLAG_DELETE_ON_CLOSE) ? ERROR_NOT_SUPPORTED : ERROR_SUCCESS;
}

HANDLE NoFile(DWORD error)
{
    Fail(error);
    return INVALID_HANDLE_VALUE;
}

HANDLE OpenAsHandle(const std::string& path, const Request& request)
{
    FileDescriptor file = OpenAsAsked(path, request);
    if (!file)
        return NoFile(LookupError(path, errno));
    struct stat entry;
    const DWORD error = CheckOpened(file.Get(), request, entry);
    // Nobody else knows of a file that was made here.
    const bool isUnwanted = error != ERROR_SUCCESS && request.disposition == CREATE_NEW;
    const bool mustGo = error == ERROR_SUCCESS && request.Has(FILE_FLAG_DELETE_ON_CLOSE);
    if ((isUnwanted || mustGo) && unlink(path.c_str()) != 0 && mustGo)
        return NoFile(LookupError(path, errno));
    if (error != ERROR_SUCCESS)
        return NoFile(error);
    LetTransfersWait(file.Get(), request);
    return HandleOf(file.Detach(), S_ISFIFO(entry.st_mode));
}

} // namespace
} // namespace tarnwell::posix

extern "C" HANDLE CreateFileW(LPCWSTR path, DWORD access, DWORD, SECURITY_ATTRIBUTES* security,
                              DWORD disposition, DWORD flags, HANDLE templateFile)
{
    using namespace tarnwell::posix;
    const std::optional<std::string> native = NativePath(path);
    if (!native)
        return INVALID_HANDLE_VALUE;
    if (!IsPlain(security) || templateFile != nullptr)
        return NoFile(ERROR_NOT_SUPPORTED);
    const Request request{access, disposition, flags};
    if (const DWORD error = CheckRequest(request); error != ERROR_SUCCESS)
        return NoFile(error);
    return OpenAsHandle(*native, request);
}
