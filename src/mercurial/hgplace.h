// Where in which Mercurial repository an item is.
#pragma once

#include "workingcopy/placeditem.h"

#include <optional>
#include <string>

namespace tarnwell
{

struct HgItem : PlacedItem
{
    // The client's word for what is checked out.
    std::u16string RevisionText() const
    {
        return revision.empty() ? u"." : revision;
    }
};

HgItem HgItemOf(const std::u16string& given, const std::optional<std::u16string>& wanted);

// Whether there are settings in it that a client may read, and run programs for.
bool HasHgSettings(const Place& place);

} // namespace tarnwell
