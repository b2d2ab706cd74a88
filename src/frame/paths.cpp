#include "frame/paths.h"

#include <algorithm>

namespace tarnwell
{

namespace
{

bool IsDriveLetter(char16_t unit)
{
    return (unit >= u'A' && unit <= u'Z') || (unit >= u'a' && unit <= u'z');
}

bool BeginsWithDrive(std::u16string_view path)
{
    return path.size() >= 2 && IsDriveLetter(path[0]) && path[1] == u':';
}

bool IsDriveRoot(std::u16string_view path, const PathRules& rules)
{
    return path.size() == 3 && BeginsWithDrive(path) && IsSeparator(path[2], rules);
}

} // namespace

bool IsSeparator(char16_t unit, const PathRules& rules)
{
    return rules.separators.find(unit) != std::u16string_view::npos;
}

std::size_t FindLeafOffset(std::u16string_view path, const PathRules& rules)
{
    const std::size_t last = path.find_last_of(rules.separators);
    const std::size_t behindSeparator = last == std::u16string_view::npos ? 0 : last + 1;
    const std::size_t behindDrive = rules.drives && path.size() > 1 && path[1] == u':' ? 2 : 0;
    return std::max(behindSeparator, behindDrive);
}

bool IsRootPath(std::u16string_view path, const PathRules& rules)
{
    if (!rules.drives)
        return path.size() == 1 && IsSeparator(path[0], rules);
    constexpr std::u16string_view extended = u"\\\\?\\";
    if (path.starts_with(extended))
        path.remove_prefix(extended.size());
    return IsDriveRoot(path, rules);
}

bool IsWholePath(std::u16string_view path, const PathRules& rules)
{
    const bool hasDrive =
        rules.drives && path.size() > 2 && path[1] == u':' && IsSeparator(path[2], rules);
    return hasDrive || (!path.empty() && IsSeparator(path[0], rules));
}

bool IsLocalPath(std::u16string_view path, const PathRules& rules)
{
    constexpr std::size_t rootLength = 3;
    return rules.drives ? IsDriveRoot(path.substr(0, rootLength), rules) : IsWholePath(path, rules);
}

void AppendSeparator(std::u16string& path, const PathRules& rules)
{
    if (path.empty() || IsSeparator(path.back(), rules))
        return;
    if (rules.drives && path.back() == u':')
        return;
    path += rules.appended;
}

std::u16string_view ParentFolderOf(std::u16string_view path, const PathRules& rules)
{
    std::u16string_view parent = path.substr(0, FindLeafOffset(path, rules));
    while (parent.size() > 1 && IsSeparator(parent.back(), rules) && !IsRootPath(parent, rules))
        parent.remove_suffix(1);
    return parent;
}

std::u16string_view LeafNameOf(std::u16string_view path, const PathRules& rules)
{
    return path.substr(FindLeafOffset(path, rules));
}

std::u16string_view DropLastSeparator(std::u16string_view parent, const PathRules& rules)
{
    const bool ends = parent.size() > 1 && IsSeparator(parent.back(), rules);
    if (ends && !IsRootPath(parent, rules))
        parent.remove_suffix(1);
    return parent;
}

std::optional<StreamPath> SplitStreamPath(std::u16string_view path, const PathRules& rules)
{
    if (!rules.dataStreams)
        return std::nullopt;
    const std::size_t colon = path.rfind(u':');
    if (colon == std::u16string_view::npos || colon < 2)
        return std::nullopt;
    if (path.find_first_of(rules.separators, colon) != std::u16string_view::npos)
        return std::nullopt;
    return StreamPath{path.substr(0, colon), path.substr(colon + 1)};
}

std::size_t SkipSeparators(std::u16string_view path, std::size_t at, std::size_t most,
                           const PathRules& rules)
{
    const std::size_t end = at + std::min(path.size() - at, most);
    while (at < end && IsSeparator(path[at], rules))
        ++at;
    return at;
}

std::size_t SkipName(std::u16string_view path, std::size_t at, const PathRules& rules)
{
    return std::min(path.size(), path.find_first_of(rules.separators, at));
}

std::size_t FirstCreatableOffset(std::u16string_view path, const PathRules& rules)
{
    if (!rules.drives)
        return SkipSeparators(path, 0, path.size(), rules);
    if (SkipSeparators(path, 0, 2, rules) == 2)
    {
        // A share: "\\server\share\". The extended form "\\?\C:\" is read as one, too, with the
        // right result.
        const std::size_t server = SkipName(path, 2, rules);
        const std::size_t share = SkipName(path, SkipSeparators(path, server, 1, rules), rules);
        return SkipSeparators(path, share, 1, rules);
    }
    if (BeginsWithDrive(path))
        return SkipSeparators(path, 2, 1, rules);
    return SkipSeparators(path, 0, 1, rules);
}

} // namespace tarnwell
