// Folders and all that is in them.
#pragma once

#include "facts.h"

#include <functional>
#include <span>

namespace tarnwell::host
{

bool IsLink(const ItemFacts& facts);

// Whether the name matches one of the patterns, or there are none.
bool IsWanted(std::span<const std::u16string> patterns, const std::u16string& name);

struct Walk
{
    bool recursive;
    // No pattern matches all names.
    std::span<const std::u16string> patterns;
    // An item, and its name as seen from the first folder: "sub/name".
    std::function<void(const ItemFacts& facts, const std::u16string& name)> visit;
    // A folder inside the first one that can't be listed, or a name that makes no item; the walk
    // goes on.
    std::function<void(const Failure& failure)> fail;
};

// Visits the items of the folder, and then, one folder after the other, what is in its folders.
// Links are visited but not followed. Throws Failure if the first folder can't be listed. Keeps no
// more than the names in the present folder and the folders that wait beside the path to it, so
// that a tree may be of any size.
void WalkFolder(const ComPtr<IFolder>& folder, const Walk& walk);

} // namespace tarnwell::host
