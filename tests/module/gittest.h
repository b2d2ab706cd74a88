// The Git file system on a repository of the test's own.
#pragma once

#include "module/workingcopytest.h"
#include "support/repository.h"

namespace tarnwell::test
{

class Git : public WorkingCopyTest
{
protected:
    Git() : WorkingCopyTest(CLSID_GITFileSystem) {}

    std::u16string Address(std::u16string_view name, const std::string& revision = {}) const
    {
        const std::u16string path = u"git://" + (repository / name);
        return revision.empty() ? path : path + u"#" + Widened(revision);
    }

    const Repository repository;
};

} // namespace tarnwell::test
