// Single entries of a folder: removing a file, making a folder.
#include "platform/posix/errors/errnotable.h"
#include "platform/posix/errors/lasterror.h"
#include "platform/posix/files/attributes.h"
#include "platform/posix/files/nativepath.h"

#include <cerrno>
#include <unistd.h>

namespace tarnwell::posix
{
namespace
{

// The platform removes a link to a folder by another operation, and protects read-only files
// from removal, where the system looks at the folder's permissions only.
bool IsProtected(const std::string& path, const struct stat& entry)
{
    struct stat target;
    if (S_ISLNK(entry.st_mode))
        return stat(path.c_str(), &target) == 0 && S_ISDIR(target.st_mode);
    return S_ISDIR(entry.st_mode) || (entry.st_mode & anyWrite) == 0;
}

} // namespace
} // namespace tarnwell::posix

using namespace tarnwell::posix;

extern "C" BOOL DeleteFileW(LPCWSTR path)
{
    const std::optional<std::string> native = NativePath(path);
    if (!native)
        return 0;
    struct stat entry;
    if (lstat(native->c_str(), &entry) != 0)
        return Fail(LookupError(*native, errno));
    if (IsProtected(*native, entry))
        return Fail(ERROR_ACCESS_DENIED);
    return unlink(native->c_str()) == 0 ? 1 : Fail(LookupError(*native, errno));
}

extern "C" BOOL CreateDirectoryW(LPCWSTR path, SECURITY_ATTRIBUTES* security)
{
    const std::optional<std::string> native = NativePath(path);
    if (!native)
        return 0;
    if (security != nullptr)
        return Fail(ERROR_NOT_SUPPORTED);
    if (mkdir(native->c_str(), 0777) == 0)
        return 1;
    // What is missing when a folder can't be made is a folder above it.
    if (errno == ENOENT)
        return Fail(ERROR_PATH_NOT_FOUND);
    return Fail(errno == EEXIST ? ERROR_ALREADY_EXISTS : ErrorFromErrno(errno));
}
