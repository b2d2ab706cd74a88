#include "platform/posix/files/nativepath.h"

#include "platform/posix/errors/errnotable.h"
#include "platform/posix/errors/lasterror.h"

#include <tarnwell/text.h>

#include <cerrno>
#include <new>
#include <sys/stat.h>

namespace tarnwell::posix
{

std::optional<std::string> NativePath(LPCWSTR path)
{
    if (path == nullptr || *path == 0)
    {
        Fail(ERROR_PATH_NOT_FOUND);
        return std::nullopt;
    }
    try
    {
        std::optional<std::string> bytes = EncodeName(path);
        if (!bytes)
            Fail(ERROR_INVALID_NAME);
        return bytes;
    }
    catch (const std::bad_alloc&)
    {
        Fail(ERROR_NOT_ENOUGH_MEMORY);
        return std::nullopt;
    }
}

std::string_view WithoutTrailingSeparators(std::string_view path)
{
    while (path.size() > 1 && path.back() == '/')
        path.remove_suffix(1);
    return path;
}

std::string_view LeafOf(std::string_view path)
{
    path = WithoutTrailingSeparators(path);
    return path.substr(path.rfind('/') + 1);
}

std::string FolderOf(std::string_view path)
{
    path = WithoutTrailingSeparators(path);
    path.remove_suffix(LeafOf(path).size());
    return path.empty() ? "." : std::string(path);
}

DWORD LookupError(const std::string& path, int number)
{
    if (number != ENOENT)
        return ErrorFromErrno(number);
    struct stat folder;
    return stat(FolderOf(path).c_str(), &folder) == 0 ? ERROR_FILE_NOT_FOUND : ERROR_PATH_NOT_FOUND;
}

bool IsDangling(int number)
{
    return number == ENOENT || number == ELOOP || number == ENOTDIR || number == ENAMETOOLONG;
}

} // namespace tarnwell::posix
