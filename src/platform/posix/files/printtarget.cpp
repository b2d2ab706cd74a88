// The file lies in a folder of its own, which nobody else can enter, and which goes with it.
#include "platform/printtarget.h"

#include "platform/posix/errors/errnotable.h"
#include "platform/posix/errors/lasterror.h"
#include "platform/posix/files/filehandle.h"
#include "platform/posix/files/nativepath.h"
#include "platform/posix/files/tempfolder.h"
#include "platform/posix/shell/deletetree.h"
#include "platform/wide.h"

#include <tarnwell/text.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <new>
#include <sys/stat.h>
#include <unistd.h>

namespace tarnwell::posix
{
namespace
{

constexpr std::string_view randomPart = "XXXXXX"; // for mkdtemp
constexpr std::string_view targetLeaf = "/content";

std::u16string FolderForTarget()
{
    std::u16string folder = DecodeName(TemporaryFolder());
    if (folder.back() != u'/')
        folder += u'/';
    return folder;
}

FileDescriptor OpenTargetAt(const std::string& path, int flags)
{
    return Open(path.c_str(), flags | O_NOFOLLOW, 0600);
}

BOOL MakeTarget(LPWSTR path)
{
    std::u16string name = FolderForTarget() + u"vrlXXXXXX/content";
    if (name.size() >= MAX_PATH)
        return Fail(ERROR_BUFFER_OVERFLOW);
    std::optional<std::string> file = NativePath(Wide(name));
    if (!file)
        return 0;
    std::string folder = file->substr(0, file->size() - targetLeaf.size());
    // From here on nothing needs memory, so that no folder is left behind.
    if (mkdtemp(folder.data()) == nullptr)
        return errno == ENOENT || errno == ENOTDIR ? Fail(ERROR_DIRECTORY) : FailWithErrno();
    std::copy(folder.begin(), folder.end(), file->begin());
    if (!OpenTargetAt(*file, O_CREAT | O_EXCL | O_WRONLY))
    {
        const int number = errno;
        rmdir(folder.c_str());
        return Fail(ErrorFromErrno(number));
    }
    std::copy(folder.end() - randomPart.size(), folder.end(),
              name.end() - randomPart.size() - targetLeaf.size());
    std::copy_n(name.c_str(), name.size() + 1, path);
    return 1;
}

// ERROR_SUCCESS, or why the file may not be had.
DWORD MakeReadable(int file)
{
    struct stat entry;
    if (fstat(file, &entry) != 0)
        return ErrorFromErrno(errno);
    if (!S_ISREG(entry.st_mode))
        return ERROR_ACCESS_DENIED;
    return fchmod(file, 0600) == 0 ? ERROR_SUCCESS : ErrorFromErrno(errno);
}

DWORD RemoveFolderOf(const std::string& file)
{
    return DeleteTree(std::string(WithoutTrailingSeparators(FolderOf(file))), true);
}

// For reading: nobody writes to what a client has written.
HANDLE OpenTarget(const std::string& path)
{
    FileDescriptor file = OpenTargetAt(path, O_RDONLY | O_NONBLOCK);
    DWORD error = file ? MakeReadable(file.Get()) : LookupError(path, errno);
    if (error == ERROR_SUCCESS)
        error = RemoveFolderOf(path);
    if (error == ERROR_SUCCESS)
        return HandleOf(file.Detach(), false);
    Fail(error);
    return INVALID_HANDLE_VALUE;
}

} // namespace
} // namespace tarnwell::posix

using namespace tarnwell::posix;

extern "C" BOOL MakePrintTarget(LPWSTR path)
{
    try
    {
        return MakeTarget(path);
    }
    catch (const std::bad_alloc&)
    {
        return Fail(ERROR_NOT_ENOUGH_MEMORY);
    }
}

extern "C" HANDLE OpenPrintTarget(LPCWSTR path)
{
    try
    {
        const std::optional<std::string> native = NativePath(path);
        return native ? OpenTarget(*native) : INVALID_HANDLE_VALUE;
    }
    catch (const std::bad_alloc&)
    {
        Fail(ERROR_NOT_ENOUGH_MEMORY);
        return INVALID_HANDLE_VALUE;
    }
}

extern "C" BOOL RemovePrintTarget(LPCWSTR path)
{
    try
    {
        const std::optional<std::string> native = NativePath(path);
        if (!native)
            return 0;
        const DWORD error = RemoveFolderOf(*native);
        return error == ERROR_SUCCESS || Fail(error);
    }
    catch (const std::bad_alloc&)
    {
        return Fail(ERROR_NOT_ENOUGH_MEMORY);
    }
}
