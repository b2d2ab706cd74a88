#include "git/gituri.h"

#include "frame/paths.h"
#include "workingcopy/workingcopycommands.h"

namespace tarnwell
{

namespace
{

std::u16string GitFolderIn(const std::u16string& folder)
{
    return folder + platformPathRules.appended + u".git";
}

} // namespace

std::optional<GitRoot> FindGitRoot(const std::u16string& path)
{
    std::u16string folder(ParentFolderOf(path));
    std::u16string name(LeafNameOf(path));
    while (!IsFolderOnDisk(GitFolderIn(folder)))
    {
        std::u16string last(LeafNameOf(folder));
        AppendSeparator(last);
        name.insert(0, last);
        std::u16string parent(ParentFolderOf(folder));
        if (parent == folder)
            return std::nullopt;
        folder = std::move(parent);
    }
    return GitRoot{folder, name};
}

} // namespace tarnwell
