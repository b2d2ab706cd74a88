// CopyFileExW and CopyFileW.
#include "platform/posix/copy/contentcopy.h"
#include "platform/posix/copy/copytarget.h"
#include "platform/posix/errors/errnotable.h"
#include "platform/posix/errors/lasterror.h"
#include "platform/posix/files/nativepath.h"
#include "platform/posix/files/permissions.h"
#include "platform/posix/files/removal.h"

#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <new>
#include <unistd.h>

namespace tarnwell::posix
{
namespace
{

constexpr DWORD knownFlags =
    COPY_FILE_FAIL_IF_EXISTS | COPY_FILE_RESTARTABLE | COPY_FILE_OPEN_SOURCE_FOR_WRITE |
    COPY_FILE_ALLOW_DECRYPTED_DESTINATION | COPY_FILE_COPY_SYMLINK | COPY_FILE_NO_BUFFERING;

struct Request
{
    std::string source;
    std::string target;
    DWORD flags;
    LPPROGRESS_ROUTINE progress;
    LPVOID data;

    bool Has(DWORD flag) const
    {
        return (flags & flag) != 0;
    }
};

LARGE_INTEGER Large(off_t number)
{
    LARGE_INTEGER large{};
    large.QuadPart = number;
    return large;
}

// Whether the copy goes on. The handles are for looking at.
bool Ask(const Request& request, off_t size, off_t done, DWORD reason, int source, int target)
{
    if (request.progress == nullptr)
        return true;
    const LARGE_INTEGER whole = Large(size);
    const LARGE_INTEGER part = Large(done);
    return request.progress(whole, part, whole, part, 1, reason, HandleOf(source, false),
                            HandleOf(target, false), request.data) == PROGRESS_CONTINUE;
}

DWORD CopyContent(const Request& request, const struct stat& facts, int source, CopyTarget& target)
{
    if (!Ask(request, facts.st_size, 0, CALLBACK_STREAM_SWITCH, source, target.Descriptor()))
        return ERROR_REQUEST_ABORTED;
    if (const DWORD error = target.Begin(facts); error != ERROR_SUCCESS)
        return error;
    ContentCopy content(source, target.Descriptor(), facts);
    off_t count = 0;
    while ((count = content.Next()) > 0)
    {
        if (!Ask(request, facts.st_size, content.Done(), CALLBACK_CHUNK_FINISHED, source,
                 target.Descriptor()))
            return ERROR_REQUEST_ABORTED;
    }
    return count == 0 ? target.Finish(facts) : ErrorFromErrno(errno);
}

DWORD CopyRegularFile(const Request& request)
{
    const FileDescriptor source = Open(request.source.c_str(), O_RDONLY | O_NONBLOCK);
    struct stat facts;
    if (!source || fstat(source.Get(), &facts) != 0)
        return LookupError(request.source, errno);
    if (S_ISDIR(facts.st_mode))
        return ERROR_ACCESS_DENIED;
    if (!S_ISREG(facts.st_mode))
        return ERROR_NOT_SUPPORTED;
    facts.st_mode = PlainMode(source.Get(), facts.st_mode);
    CopyTarget target;
    const bool mustBeNew = request.Has(COPY_FILE_FAIL_IF_EXISTS);
    if (const DWORD error = target.Open(request.target, facts, mustBeNew); error != ERROR_SUCCESS)
        return error;
    return CopyContent(request, facts, source.Get(), target);
}

// ERROR_SUCCESS, or why a link can't take the target's place.
DWORD ClearPlaceForLink(const Request& request, const struct stat& source)
{
    struct stat found;
    if (lstat(request.target.c_str(), &found) != 0)
        return errno == ENOENT ? ERROR_SUCCESS : LookupError(request.target, errno);
    if (S_ISDIR(found.st_mode))
        return ERROR_ACCESS_DENIED;
    if (request.Has(COPY_FILE_FAIL_IF_EXISTS))
        return ERROR_FILE_EXISTS;
    // If a link took the place of the file that it leads to, only the link would be left.
    struct stat end;
    if (stat(request.source.c_str(), &end) != 0)
    {
        if (!IsDangling(errno))
            return LookupError(request.source, errno);
    }
    else if (CheckCopyTarget(end, found) == ERROR_SHARING_VIOLATION)
    {
        return ERROR_SHARING_VIOLATION;
    }
    const DWORD error = CheckCopyTarget(source, found);
    const bool isOtherLink = error == ERROR_NOT_SUPPORTED && S_ISLNK(found.st_mode);
    if (error != ERROR_SUCCESS && !isOtherLink)
        return error;
    return RemoveIfSame(request.target.c_str(), found);
}

DWORD CopyLink(const Request& request, const struct stat& facts)
{
    char text[PATH_MAX];
    const ssize_t length = readlink(request.source.c_str(), text, sizeof text);
    if (length < 0)
        return LookupError(request.source, errno);
    if (!Ask(request, 0, 0, CALLBACK_STREAM_SWITCH, -1, -1))
        return ERROR_REQUEST_ABORTED;
    if (const DWORD error = ClearPlaceForLink(request, facts); error != ERROR_SUCCESS)
        return error;
    const std::string contained(text, static_cast<std::size_t>(length));
    if (symlink(contained.c_str(), request.target.c_str()) != 0)
        return LookupError(request.target, errno);
    const timespec times[] = {{0, UTIME_OMIT}, facts.st_mtim};
    utimensat(AT_FDCWD, request.target.c_str(), times, AT_SYMLINK_NOFOLLOW);
    return ERROR_SUCCESS;
}

DWORD Copy(const Request& request)
{
    if (!request.Has(COPY_FILE_COPY_SYMLINK))
        return CopyRegularFile(request);
    struct stat facts;
    if (lstat(request.source.c_str(), &facts) != 0)
        return LookupError(request.source, errno);
    return S_ISLNK(facts.st_mode) ? CopyLink(request, facts) : CopyRegularFile(request);
}

} // namespace
} // namespace tarnwell::posix

using namespace tarnwell::posix;

extern "C" BOOL CopyFileExW(LPCWSTR source, LPCWSTR target, LPPROGRESS_ROUTINE progress,
                            LPVOID data, BOOL* cancel, DWORD flags)
{
    std::optional<std::string> from = NativePath(source);
    if (!from)
        return 0;
    std::optional<std::string> to = NativePath(target);
    if (!to)
        return 0;
    if (cancel != nullptr)
        return Fail(ERROR_NOT_SUPPORTED);
    if ((flags & ~knownFlags) != 0)
        return Fail(ERROR_INVALID_PARAMETER);
    try
    {
        const DWORD error = Copy({std::move(*from), std::move(*to), flags, progress, data});
        return error == ERROR_SUCCESS ? 1 : Fail(error);
    }
    catch (const std::bad_alloc&)
    {
        return Fail(ERROR_NOT_ENOUGH_MEMORY);
    }
}

extern "C" BOOL CopyFileW(LPCWSTR source, LPCWSTR target, BOOL failIfExists)
{
    return CopyFileExW(source, target, nullptr, nullptr, nullptr,
                       failIfExists ? COPY_FILE_FAIL_IF_EXISTS : 0);
}
