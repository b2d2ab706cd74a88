#include "git/gitplace.h"

#include "git/gituri.h"

namespace tarnwell
{

namespace
{

// Linked working trees and submodules have a file that tells where their repository is.
bool IsWorkingTree(const std::u16string& folder)
{
    const std::u16string git = PathInPlace({folder, {}}, u".git");
    const KindOnDisk kind = KindOf(git);
    return kind == KindOnDisk::File ||
           (kind == KindOnDisk::Folder &&
            KindOf(PathInPlace({git, {}}, u"HEAD")) == KindOnDisk::File);
}

bool IsBareRepository(const std::u16string& folder)
{
    const Place place{folder, {}};
    return KindOf(PathInPlace(place, u"HEAD")) == KindOnDisk::File &&
           KindOf(PathInPlace(place, u"objects")) == KindOnDisk::Folder &&
           KindOf(PathInPlace(place, u"refs")) == KindOnDisk::Folder;
}

} // namespace

const Placing gitPlacing{
    gitAddresses, MakeAddress<GITUri>,
    [](const std::u16string& folder) { return IsWorkingTree(folder) || IsBareRepository(folder); },
    u".git/HEAD"};

const Placing gitWorkTrees{gitAddresses, MakeAddress<GITUri>, IsWorkingTree, u".git/HEAD"};

} // namespace tarnwell
