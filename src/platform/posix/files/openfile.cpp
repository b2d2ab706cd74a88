// CreateFileW.
#include "platform/posix/errors/lasterror.h"
#include "platform/posix/files/filehandle.h"
#include "platform/posix/files/nativepath.h"

#include <cerrno>
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
    int flags = O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
    flags |= AccessFlags(request) | dispositionFlags[request.disposition];
    // What goes away by itself is never found through a link that somebody put there.
    if (request.Has(FILE_FLAG_DELETE_ON_CLOSE))
        flags |= O_NOFOLLOW;
    return flags;
}

int OpenRestarted(const char* path, int flags, mode_t mode)
{
    int descriptor = -1;
    do
        descriptor = open(path, flags, mode);
    while (descriptor < 0 && errno == EINTR);
    return descriptor;
}

bool IsLink(const std::string& path)
{
    struct stat entry;
    return lstat(path.c_str(), &entry) == 0 && S_ISLNK(entry.st_mode);
}

// Whether a link whose target can't be opened for this reason has no target at all.
bool IsDangling(int number)
{
    return number == ENOENT || number == ELOOP || number == ENOTDIR || number == ENAMETOOLONG;
}

// A lookup finds a link without a target as itself, for its times.
FileDescriptor OpenDanglingLink(const std::string& path, const Request& request)
{
    const bool isLookup =
        request.Has(FILE_FLAG_BACKUP_SEMANTICS) && request.disposition == OPEN_EXISTING;
    const int number = errno;
    FileDescriptor link;
    if (isLookup && IsDangling(number) && IsLink(path))
        link = FileDescriptor(OpenRestarted(path.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC, 0));
    errno = number;
    return link;
}

FileDescriptor Open(const std::string& path, const Request& request)
{
    const bool isPrivate =
        request.Has(FILE_FLAG_DELETE_ON_CLOSE) || request.Has(FILE_ATTRIBUTE_TEMPORARY);
    FileDescriptor file(OpenRestarted(path.c_str(), OpenFlags(request), isPrivate ? 0600 : 0666));
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
    {
        FailWithErrno();
        return GetLastError();
    }
    if (!S_ISDIR(entry.st_mode))
        return ERROR_SUCCESS;
    if (!request.Has(FILE_FLAG_BACKUP_SEMANTICS))
        return ERROR_ACCESS_DENIED;
    return request.Has(FILE_FLAG_DELETE_ON_CLOSE) ? ERROR_NOT_SUPPORTED : ERROR_SUCCESS;
}

} // namespace
} // namespace tarnwell::posix

extern "C" HANDLE CreateFileW(LPCWSTR path, DWORD access, DWORD, SECURITY_ATTRIBUTES* security,
                              DWORD disposition, DWORD flags, HANDLE templateFile)
{
    using namespace tarnwell::posix;
    const auto fail = [](DWORD error) {
        Fail(error);
        return INVALID_HANDLE_VALUE;
    };

    const std::optional<std::string> native = NativePath(path);
    if (!native)
        return INVALID_HANDLE_VALUE;
    if (!IsPlain(security) || templateFile != nullptr)
        return fail(ERROR_NOT_SUPPORTED);
    const Request request{access, disposition, flags};
    if (const DWORD error = CheckRequest(request); error != ERROR_SUCCESS)
        return fail(error);

    FileDescriptor file = Open(*native, request);
    if (!file)
        return fail(LookupError(*native, errno));
    struct stat entry;
    if (const DWORD error = CheckOpened(file.Get(), request, entry); error != ERROR_SUCCESS)
        return fail(error);
    if (request.Has(FILE_FLAG_DELETE_ON_CLOSE) && unlink(native->c_str()) != 0)
        return fail(LookupError(*native, errno));
    LetTransfersWait(file.Get(), request);
    return HandleOf(file.Detach(), S_ISFIFO(entry.st_mode));
}
