#include "platform/posix/shell/trash.h"

#include "platform/posix/dialogs/quietprogram.h"
#include "platform/posix/errors/errnotable.h"
#include "platform/posix/files/descriptor.h"
#include "platform/posix/files/dirstream.h"
#include "platform/posix/files/nativepath.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>

namespace tarnwell::posix
{
namespace
{

// Far below what the system takes as one program's arguments.
constexpr std::size_t longestCommand = std::size_t{64} << 10;

// Without the separator at its end, which would make a link the folder that it leads to; and in a
// form that isn't taken for a URI, as "a:b" would be.
std::string ArgumentFor(std::string_view path)
{
    const std::string plain(WithoutTrailingSeparators(path));
    return plain.starts_with('/') ? plain : "./" + plain;
}

bool IsGone(const std::string& path)
{
    struct stat entry;
    return lstat(path.c_str(), &entry) != 0 && errno == ENOENT;
}

DWORD Run(const std::vector<std::string>& items)
{
    std::vector<std::string> arguments{"gio", "trash", "--"};
    arguments.insert(arguments.end(), items.begin(), items.end());
    const ProgramEnd end = RunQuietly(std::move(arguments));
    if (end.number != 0)
        return end.number == ENOENT ? ERROR_NOT_SUPPORTED : ErrorFromErrno(end.number);
    // If the host collects the exit code first, what is left in the folder tells.
    const bool isDone =
        end.exitCode ? *end.exitCode == 0 : std::all_of(items.begin(), items.end(), IsGone);
    return isDone ? ERROR_SUCCESS : ERROR_GEN_FAILURE;
}

} // namespace

DWORD MoveToTrash(const std::vector<std::string>& paths)
{
    std::vector<std::string> items;
    std::size_t length = 0;
    for (const std::string& path : paths)
    {
        items.push_back(ArgumentFor(path));
        length += items.back().size() + 1;
        if (length < longestCommand)
            continue;
        if (const DWORD error = Run(items); error != ERROR_SUCCESS)
            return error;
        items.clear();
        length = 0;
    }
    return items.empty() ? ERROR_SUCCESS : Run(items);
}

DWORD CheckEmptyFolder(const std::string& path)
{
    const std::string item(WithoutTrailingSeparators(path));
    FileDescriptor folder = Open(item.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW);
    if (!folder)
        return errno == ENOTDIR || errno == ELOOP ? ERROR_SUCCESS : LookupError(item, errno);
    const DirStream stream(fdopendir(folder.Get()));
    if (!stream)
        return ErrorFromErrno(errno);
    folder.Detach();
    errno = 0;
    while (const dirent* const entry = readdir(stream.get()))
    {
        if (!IsDots(entry->d_name))
            return ERROR_DIR_NOT_EMPTY;
    }
    return errno == 0 ? ERROR_SUCCESS : ErrorFromErrno(errno);
}

} // namespace tarnwell::posix
