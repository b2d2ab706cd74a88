// Revisions as they are told: by the log of either kind.
#pragma once

#include "facts.h"

namespace tarnwell::host
{

struct RevisionFacts
{
    Fact<std::u16string> id;
    Fact<std::u16string> description;
    Fact<std::u16string> author;
    Fact<std::uint64_t> modified;
    Fact<std::uint64_t> recorded;
    Fact<std::u16string> uri;
    // The item's name then; nothing where the log doesn't tell it.
    std::optional<std::u16string> path;
};

void PrintRevision(const RevisionFacts& facts, bool json);

} // namespace tarnwell::host
