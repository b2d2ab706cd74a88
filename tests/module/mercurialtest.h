// The Mercurial file system on a repository of the test's own.
#pragma once

#include "module/systemtest.h"
#include "support/clients.h"
#include "support/mercurialrepository.h"

namespace tarnwell::test
{

class Mercurial : public SystemTest
{
protected:
    Mercurial() : SystemTest(CLSID_HGFileSystem, WhyNoClients()) {}

    std::u16string Address(std::u16string_view name, const std::string& revision = {}) const
    {
        const std::u16string path = u"hg://" + (repository / name);
        return revision.empty() ? path : path + u"#" + Widened(revision);
    }

    // Those in the list, without the working copy's.
    std::vector<std::u16string> Descriptions(std::u16string_view name) const
    {
        std::vector<std::u16string> found;
        for (const Revision& revision : Revisions(Address(name)))
            found.push_back(revision.description);
        if (!found.empty())
            found.erase(found.begin());
        return found;
    }

    const MercurialRepository repository;
};

} // namespace tarnwell::test
