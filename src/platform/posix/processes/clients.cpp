#include "platform/clients.h"

#include "platform/posix/errors/lasterror.h"
#include "platform/posix/files/nativepath.h"

#include <algorithm>
#include <cstdlib>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace tarnwell
{

const ClientNames clientNames{u"git", u"hg", u"svn", u"p4", u"/", false, true};

namespace posix
{
namespace
{

bool IsProgram(const std::string& path)
{
    struct stat entry;
    return stat(path.c_str(), &entry) == 0 && S_ISREG(entry.st_mode) &&
           access(path.c_str(), X_OK) == 0;
}

// Folders that are named from the current one are passed over: what is run never depends on where
// the host happens to be.
bool IsOnPath(const std::string& program)
{
    const char* const path = std::getenv("PATH");
    std::string_view folders = path == nullptr ? std::string_view() : path;
    while (!folders.empty())
    {
        const std::string_view folder = folders.substr(0, folders.find(':'));
        if (folder.starts_with('/') && IsProgram(std::string(folder) + "/" + program))
            return true;
        folders.remove_prefix(std::min(folders.size(), folder.size() + 1));
    }
    return false;
}

} // namespace
} // namespace posix

} // namespace tarnwell

extern "C" BOOL FindClient(LPCWSTR program)
{
    using namespace tarnwell::posix;
    try
    {
        const std::optional<std::string> native = NativePath(program);
        return native && (IsOnPath(*native) || Fail(ERROR_FILE_NOT_FOUND));
    }
    catch (const std::bad_alloc&)
    {
        return Fail(ERROR_NOT_ENOUGH_MEMORY);
    }
}
