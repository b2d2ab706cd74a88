#include "mercurial/hgplace.h"

#include "mercurial/hguri.h"

#include <algorithm>

namespace tarnwell
{

namespace
{

bool IsHgRepository(const std::u16string& folder)
{
    return KindOf(PathInPlace({folder, {}}, u".hg")) == KindOnDisk::Folder;
}

constexpr Placing hgPlaces{mercurialAddresses, MakeAddress<HGUri>, IsHgRepository, u".hg"};

} // namespace

HgItem HgItemOf(const std::u16string& given, const std::optional<std::u16string>& wanted)
{
    return {PlacedItemOf(hgPlaces, given, wanted)};
}

bool HasHgSettings(const Place& place)
{
    // The last one leads to another repository, which may have some.
    constexpr const char16_t* names[] = {u".hg/hgrc", u".hg/hgrc-not-shared", u".hg/sharedpath"};
    return std::any_of(std::begin(names), std::end(names), [&](const char16_t* name) {
        return KindOf(PathInPlace(place, name)) != KindOnDisk::Missing;
    });
}

} // namespace tarnwell
