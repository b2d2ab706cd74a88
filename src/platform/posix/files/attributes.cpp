#include "platform/posix/files/attributes.h"

#include "platform/posix/errors/lasterror.h"
#include "platform/posix/files/nativepath.h"

#include <cerrno>

namespace tarnwell::posix
{
namespace
{

constexpr mode_t settableBits = 07777;

bool IsDotFile(std::string_view leaf)
{
    return leaf.starts_with('.') && leaf != "." && leaf != "..";
}

} // namespace

DWORD AttributesOf(mode_t mode, std::string_view leaf, bool isLink)
{
    DWORD attributes = 0;
    if (S_ISDIR(mode))
        attributes |= FILE_ATTRIBUTE_DIRECTORY;
    if ((mode & anyWrite) == 0)
        attributes |= FILE_ATTRIBUTE_READONLY;
    if (IsDotFile(leaf))
        attributes |= FILE_ATTRIBUTE_HIDDEN;
    if (isLink)
        attributes |= FILE_ATTRIBUTE_REPARSE_POINT;
    return attributes != 0 ? attributes : FILE_ATTRIBUTE_NORMAL;
}

} // namespace tarnwell::posix

using namespace tarnwell::posix;

extern "C" DWORD GetFileAttributesW(LPCWSTR path)
{
    const std::optional<std::string> native = NativePath(path);
    if (!native)
        return INVALID_FILE_ATTRIBUTES;
    struct stat entry;
    if (lstat(native->c_str(), &entry) != 0)
    {
        Fail(LookupError(*native, errno));
        return INVALID_FILE_ATTRIBUTES;
    }
    // A link whose target can't be had exists all the same.
    const bool isLink = S_ISLNK(entry.st_mode);
    struct stat target;
    if (isLink && stat(native->c_str(), &target) == 0)
        entry = target;
    return AttributesOf(entry.st_mode, LeafOf(*native), isLink);
}

extern "C" BOOL SetFileAttributesW(LPCWSTR path, DWORD attributes)
{
    const std::optional<std::string> native = NativePath(path);
    if (!native)
        return 0;
    struct stat entry;
    if (stat(native->c_str(), &entry) != 0)
        return Fail(LookupError(*native, errno));
    const bool readOnly = (attributes & FILE_ATTRIBUTE_READONLY) != 0;
    const mode_t mode = readOnly ? entry.st_mode & ~anyWrite : entry.st_mode | S_IWUSR;
    if (chmod(native->c_str(), mode & settableBits) != 0)
        return Fail(LookupError(*native, errno));
    return 1;
}
