#include "mercurial/hgtreeparser.h"

#include "mercurial/hgwords.h"

#include <algorithm>

namespace tarnwell
{

namespace
{

std::optional<HgKind> KindOfType(std::string_view type)
{
    if (type.empty())
        return HgKind::File;
    if (type == "*")
        return HgKind::Program;
    if (type == "@")
        return HgKind::Link;
    return std::nullopt;
}

bool IsName(std::string_view name)
{
    return !name.empty() && name != "." && name != ".." && name.find('\0') == std::string::npos;
}

} // namespace

std::optional<HgEntry> HgManifestParser::Next()
{
    if (!facts_)
        facts_ = feed_.TakeTo('\0');
    const auto path = facts_ ? feed_.TakeTo('\0') : std::nullopt;
    if (!path)
        return std::nullopt;
    std::string_view facts = *facts_;
    const auto id = TakeTo(facts, ' ');
    const auto kind = KindOfType(facts);
    if (!id || !IsHgId(*id) || !kind || !IsHgPath(*path))
        return feed_.Break();
    HgEntry entry{std::string(*path), std::string(*id), *kind};
    facts_.reset();
    feed_.EndRecord();
    return entry;
}

std::optional<HgSize> HgSizeParser::Next()
{
    if (!path_)
        path_ = feed_.TakeTo('\0');
    const auto text = path_ ? feed_.TakeTo('\0') : std::nullopt;
    if (!text)
        return std::nullopt;
    const auto size = WholeNumber(*text);
    if (!size)
        return feed_.Break();
    HgSize found{std::move(*path_), *size};
    path_.reset();
    feed_.EndRecord();
    return found;
}

std::optional<std::vector<HgEntry>> ReadHgRepositories(std::string_view file)
{
    std::vector<HgEntry> entries;
    while (!file.empty())
    {
        auto line = TakeTo(file, '\n');
        if (!line)
        {
            line = file;
            file = {};
        }
        if (line->empty())
            continue;
        const auto id = TakeTo(*line, ' ');
        if (!id || !IsHgPath(*line))
            return std::nullopt;
        entries.push_back({std::string(*line), std::string(*id), HgKind::Repository});
    }
    return entries;
}

bool IsHgPath(std::string_view path)
{
    while (const auto name = TakeTo(path, '/'))
    {
        if (!IsName(*name))
            return false;
    }
    return IsName(path);
}

HgManifest::HgManifest(std::vector<HgEntry> entries) : entries_(std::move(entries))
{
    std::stable_sort(entries_.begin(), entries_.end(),
                     [](const HgEntry& a, const HgEntry& b) { return a.path < b.path; });
}

std::optional<HgEntry> HgManifest::Find(std::string_view path) const
{
    const auto found =
        std::lower_bound(entries_.begin(), entries_.end(), path,
                         [](const HgEntry& entry, std::string_view p) { return entry.path < p; });
    if (found != entries_.end() && found->path == path)
        return *found;
    const Range below = Below(path);
    if (!path.empty() && below.begin == below.end)
        return std::nullopt;
    return HgEntry{std::string(path), {}, HgKind::Folder};
}

HgManifest::Range HgManifest::Below(std::string_view folder) const
{
    if (folder.empty())
        return {entries_.begin(), entries_.end()};
    // "0" is what follows "/".
    const auto at = [&](char end) {
        return std::lower_bound(
            entries_.begin(), entries_.end(), std::string(folder) + end,
            [](const HgEntry& entry, const std::string& path) { return entry.path < path; });
    };
    return {at('/'), at('0')};
}

std::vector<HgEntry> HgManifest::ChildrenOf(std::string_view folder) const
{
    std::vector<HgEntry> children;
    const auto [begin, end] = Below(folder);
    const std::size_t start = folder.empty() ? 0 : folder.size() + 1;
    for (Position entry = begin; entry != end;)
    {
        const std::size_t slash = entry->path.find('/', start);
        if (slash == std::string::npos)
        {
            children.push_back(*entry++);
            continue;
        }
        const std::string child = entry->path.substr(0, slash);
        children.push_back({child, {}, HgKind::Folder});
        entry = Below(child).end;
    }
    return children;
}

} // namespace tarnwell
