#include "git/gitworkparser.h"

#include <algorithm>

namespace tarnwell
{

std::set<std::string> ReadGitFilterNames(std::string_view settings)
{
    constexpr std::string_view section = "filter.";
    std::set<std::string> names;
    while (!settings.empty())
    {
        const std::string_view setting = settings.substr(0, settings.find('\0'));
        settings.remove_prefix(std::min(settings.size(), setting.size() + 1));
        const std::size_t lastDot = setting.rfind('.');
        if (setting.starts_with(section) && lastDot >= section.size())
            names.emplace(setting.substr(section.size(), lastDot - section.size()));
    }
    return names;
}

std::string QuotedGitPath(std::string_view path)
{
    std::string quoted = "\"";
    for (const char byte : path)
    {
        if (byte == '"' || byte == '\\')
            quoted += '\\';
        if (byte == '\n')
            quoted += "\\n";
        else
            quoted += byte;
    }
    return quoted + "\"";
}

} // namespace tarnwell
