#include "platform/readall.h"
#include "system.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <sys/stat.h>
#include <unistd.h>

namespace tarnwell::host
{

namespace
{

bool IsProgram(const std::string& file)
{
    struct stat entry;
    return stat(file.c_str(), &entry) == 0 && S_ISREG(entry.st_mode) &&
           access(file.c_str(), X_OK) == 0;
}

// Only whole paths are looked in: what lies in the current folder may be anybody's.
std::optional<std::string> FindProgram(const std::string& name)
{
    const char* const variable = std::getenv("PATH");
    std::string_view folders = variable == nullptr ? "/usr/bin:/bin" : variable;
    while (!folders.empty())
    {
        const std::string_view folder = folders.substr(0, folders.find(':'));
        folders.remove_prefix(std::min(folders.size(), folder.size() + 1));
        const std::string file = std::string(folder) + "/" + name;
        if (folder.starts_with('/') && IsProgram(file))
            return file;
    }
    return std::nullopt;
}

// For the shell.
std::string Quoted(const std::string& text)
{
    std::string quoted = "'";
    for (const char c : text)
    {
        if (c == '\'')
            quoted += "'\\'";
        quoted += c;
    }
    return quoted + "'";
}

} // namespace

std::optional<std::string> OutputOf(const std::string& program, const char* arguments)
{
    const std::optional<std::string> file = FindProgram(program);
    if (!file)
        return std::nullopt;
    FILE* const pipe = popen((Quoted(*file) + " " + arguments + " 2>/dev/null").c_str(), "re");
    if (pipe == nullptr)
        return std::nullopt;
    const std::string output = ReadAll(pipe);
    return pclose(pipe) == 0 ? std::optional(output) : std::nullopt;
}

} // namespace tarnwell::host
