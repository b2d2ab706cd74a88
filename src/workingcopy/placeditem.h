// What a host means by a path and a revision, and where in which repository that is.
#pragma once

#include "workingcopy/workingcopyuri.h"

#include <memory>
#include <optional>
#include <string>

namespace tarnwell
{

struct Place
{
    std::u16string folder; // of the repository or its working tree, where the client is to run
    std::u16string path;   // below it, with "/" in between; empty for all of it
};

// The local path of a name in the repository.
std::u16string PathInPlace(const Place& place, const std::u16string& name);

enum class KindOnDisk
{
    Missing,
    File,
    Folder
};
// Of what the path leads to.
KindOnDisk KindOf(const std::u16string& path);

struct PlacedItem
{
    Place place;
    std::u16string revision; // empty for what is checked out
    std::u16string address;  // as the host gave it, for texts
};

// What a system says of its places.
struct Placing
{
    const AddressRow& addresses;
    std::shared_ptr<Uri> (*makeUri)(std::u16string text);
    // Whether a repository or a working tree of one is in the folder.
    bool (*isRepository)(const std::u16string& folder);
    // What most of them have, which can be seen by whoever may enter the folder.
    std::u16string_view mark;
};

// The innermost repository at or above a local path; nothing if there is none, or none is seen.
std::optional<Place> PlaceOf(const Placing& placing, const std::u16string& path);

// The item is in the innermost repository at or above the path, which needn't exist. `given` is an
// address, whose revision counts unless one is `wanted`, or a local path, which is taken as it
// stands. Throws for an address that can't be, where there is no repository, as for a relative path
// and one that leads up again below the repository, and where it can't be seen whether there is
// one.
PlacedItem PlacedItemOf(const Placing& placing, const std::u16string& given,
                        const std::optional<std::u16string>& wanted);

} // namespace tarnwell
