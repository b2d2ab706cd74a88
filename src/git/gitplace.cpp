#include "git/gitplace.h"

#include "frame/paths.h"
#include "platform/wide.h"

namespace tarnwell
{

namespace
{

enum class Kind
{
    Missing,
    File,
    Folder
};

Kind KindOf(const std::u16string& path)
{
    const DWORD attributes = GetFileAttributesW(Wide(path));
    if (attributes == INVALID_FILE_ATTRIBUTES)
        return Kind::Missing;
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? Kind::Folder : Kind::File;
}

std::u16string Joined(std::u16string folder, std::u16string_view name)
{
    AppendSeparator(folder);
    return folder += name;
}

// Linked working trees and submodules have a file that tells where their repository is.
bool IsWorkingTree(const std::u16string& folder)
{
    const std::u16string git = Joined(folder, u".git");
    const Kind kind = KindOf(git);
    return kind == Kind::File ||
           (kind == Kind::Folder && KindOf(Joined(git, u"HEAD")) == Kind::File);
}

bool IsBareRepository(const std::u16string& folder)
{
    return KindOf(Joined(folder, u"HEAD")) == Kind::File &&
           KindOf(Joined(folder, u"objects")) == Kind::Folder &&
           KindOf(Joined(folder, u"refs")) == Kind::Folder;
}

} // namespace

bool IsWholePath(const std::u16string& path)
{
    const bool hasDrive =
        platformPathRules.drives && path.size() > 2 && path[1] == u':' && IsSeparator(path[2]);
    return hasDrive || (!path.empty() && IsSeparator(path[0]));
}

std::optional<GitPlace> FindGitPlace(const std::u16string& path)
{
    if (!IsWholePath(path))
        return std::nullopt;
    GitPlace place{path, {}};
    while (!IsWorkingTree(place.folder) && !IsBareRepository(place.folder))
    {
        const std::u16string name(LeafNameOf(place.folder));
        std::u16string parent(ParentFolderOf(place.folder));
        if (name == u".." || parent == place.folder || parent.empty())
            return std::nullopt;
        if (!name.empty() && name != u".")
            place.path.insert(0, place.path.empty() ? name : name + u"/");
        place.folder = std::move(parent);
    }
    return place;
}

std::u16string PathInPlace(const GitPlace& place, const std::u16string& name)
{
    return name.empty() ? place.folder : Joined(place.folder, name);
}

} // namespace tarnwell
