// The Git file system on a repository of the test's own.
#pragma once

#include "module/systemtest.h"
#include "support/clients.h"
#include "support/repository.h"

namespace tarnwell::test
{

class Git : public SystemTest
{
protected:
    Git() : SystemTest(CLSID_GITFileSystem, WhyNoClients()) {}

    std::u16string Address(std::u16string_view name, const std::string& revision = {}) const
    {
        const std::u16string path = u"git://" + (repository / name);
        return revision.empty() ? path : path + u"#" + Widened(revision);
    }

    const Repository repository;
};

} // namespace tarnwell::test
