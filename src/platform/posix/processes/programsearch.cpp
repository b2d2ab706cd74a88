#include "platform/posix/processes/programsearch.h"

#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace tarnwell::posix
{
namespace
{

// What the C library uses where there is no PATH.
constexpr std::string_view usualFolders = "/bin:/usr/bin";

bool CanBeRun(const std::string& file)
{
    struct stat entry;
    return stat(file.c_str(), &entry) == 0 && S_ISREG(entry.st_mode) &&
           faccessat(AT_FDCWD, file.c_str(), X_OK, AT_EACCESS) == 0;
}

} // namespace

std::optional<std::string> FindProgram(const std::string& name)
{
    if (name.find('/') != std::string::npos)
        return name;
    const char* const variable = std::getenv("PATH");
    std::string_view folders = variable == nullptr ? usualFolders : variable;
    while (!folders.empty() && !name.empty())
    {
        const std::string_view folder = folders.substr(0, folders.find(':'));
        folders.remove_prefix(std::min(folders.size(), folder.size() + 1));
        std::string file = std::string(folder) + "/" + name;
        if (folder.starts_with('/') && CanBeRun(file))
            return file;
    }
    return std::nullopt;
}

} // namespace tarnwell::posix
