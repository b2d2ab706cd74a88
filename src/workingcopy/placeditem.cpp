#include "workingcopy/placeditem.h"

#include "frame/paths.h"
#include "platform/wide.h"
#include "runner/strictclient.h"

namespace tarnwell
{

namespace
{

// Whether one may not even see what is there.
bool IsRefused(const std::u16string& path)
{
    return GetFileAttributesW(Wide(path)) == INVALID_FILE_ATTRIBUTES &&
           GetLastError() == ERROR_ACCESS_DENIED;
}

// Nothing if there is none; `isHidden` says that there may be one all the same.
std::optional<Place> FindPlace(const std::u16string& path, const Placing& placing, bool& isHidden)
{
    if (!IsWholePath(path))
        return std::nullopt;
    Place place{path, {}};
    while (!placing.isRepository(place.folder))
    {
        isHidden =
            isHidden || IsRefused(PathInPlace({place.folder, {}}, std::u16string(placing.mark)));
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

} // namespace

KindOnDisk KindOf(const std::u16string& path)
{
    const DWORD attributes = GetFileAttributesW(Wide(path));
    if (attributes == INVALID_FILE_ATTRIBUTES)
        return KindOnDisk::Missing;
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? KindOnDisk::Folder : KindOnDisk::File;
}

std::u16string PathInPlace(const Place& place, const std::u16string& name)
{
    std::u16string path = place.folder;
    if (!name.empty())
    {
        AppendSeparator(path);
        path += name;
    }
    return path;
}

std::optional<Place> PlaceOf(const Placing& placing, const std::u16string& path)
{
    bool isHidden = false;
    return FindPlace(path, placing, isHidden);
}

PlacedItem PlacedItemOf(const Placing& placing, const std::u16string& given,
                        const std::optional<std::u16string>& wanted)
{
    std::u16string path = given;
    std::u16string revision = wanted.value_or(u"");
    if (!IsWholePath(path))
    {
        path = placing.makeUri(path)->GetPath();
        const auto marked = workingCopyMarker.RevisionOf(path);
        if (!wanted && marked)
        {
            revision = *marked;
            path = workingCopyMarker.Strip(path);
        }
    }
    bool isHidden = false;
    std::optional<Place> place = FindPlace(path, placing, isHidden);
    if (!place)
        ThrowStrictFailure(placing.addresses.source, isHidden ? noRight : noRepository, given);
    return {std::move(*place), std::move(revision), given};
}

} // namespace tarnwell
