#include "local/snapshotpaths.h"

#include "frame/paths.h"
#include "frame/pattern.h"

namespace tarnwell
{

namespace
{

constexpr std::u16string_view extendedPrefix = u"\\\\?\\";

} // namespace

std::optional<std::u16string> NormalizeRevisionPath(std::u16string_view path)
{
    // From "\\?\UNC\server\share" too, which then is no path of a drive.
    if (path.starts_with(extendedPrefix))
        return std::u16string(path.substr(extendedPrefix.size()));

    static const Pattern snapshotPath(
        u"\\\\\\\\localhost\\\\([a-zA-Z])\\$\\\\@GMT-[0-9][0-9][0-9][0-9]\\.[0-9][0-9]\\.[0-9][0-9]"
        u"-[0-9][0-9]\\.[0-9][0-9]\\.[0-9][0-9]\\\\(.*)");
    Groups groups;
    if (!snapshotPath.Search(path, groups))
        return std::nullopt;
    return std::u16string(groups[1]) + u":\\" + std::u16string(groups[2]);
}

std::optional<DrivePath> SplitDrivePath(std::u16string_view path)
{
    if (path.starts_with(extendedPrefix))
        path.remove_prefix(extendedPrefix.size());
    constexpr std::size_t rootLength = 3;
    if (!IsRootPath(path.substr(0, rootLength), windowsPathRules))
        return std::nullopt;
    return DrivePath{path.front(), path.substr(rootLength)};
}

} // namespace tarnwell
