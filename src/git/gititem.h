// What a host means by a path and a revision of a Git repository.
#pragma once

#include "git/gitplace.h"

#include <optional>
#include <string>

namespace tarnwell
{

struct GitItem
{
    GitPlace place;
    std::u16string revision; // empty for what is checked out
    std::u16string address;  // as the host gave it, for texts

    std::u16string RevisionText() const
    {
        return revision.empty() ? u"HEAD" : revision;
    }
};

// `given` is an address, whose revision counts unless one is `wanted`, or a local path. Throws
// for an address that can't be, and where there is no repository.
GitItem GitItemOf(const std::u16string& given, const std::optional<std::u16string>& wanted);

} // namespace tarnwell
