// Items in Git repositories: also in linked working trees, submodules and bare ones.
#pragma once

#include "workingcopy/placeditem.h"

namespace tarnwell
{

extern const Placing gitPlacing;
// The same without bare ones.
extern const Placing gitWorkTrees;

// What a revision is called in texts.
inline std::u16string GitRevisionText(const PlacedItem& item)
{
    return item.revision.empty() ? u"HEAD" : item.revision;
}

} // namespace tarnwell
