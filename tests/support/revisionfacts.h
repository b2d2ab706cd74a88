// What a revision says of itself.
#pragma once

#include <tarnwell/pointers.h>
#include <tarnwell/revisions.h>

#include <string>

namespace tarnwell::test
{

struct Revision
{
    std::u16string id, description, author, uri;
    std::uint64_t modified = 0; // FILETIME values
    std::uint64_t time = 0;

    friend bool operator==(const Revision&, const Revision&) = default;
};

Revision FactsOf(const ComPtr<IRevision>& revision);
// All of them, in their order.
std::vector<Revision> FactsOf(const ComPtr<IRevisions>& revisions);

} // namespace tarnwell::test
