// What asks a Subversion repository of the test for its histories in full, and for trees.
#pragma once

#include "module/asking.h"
#include "module/svntest.h"

#include <tarnwell/text.h>

#include <string>

namespace tarnwell::test
{

class SvnStrict : public Asking<SvnTest>
{
protected:
    // Both questions fail like this.
    void ExpectBothFail(const std::u16string& path, HRESULT status,
                        const MaybeRevision& revision = {}) const
    {
        const Outcome history = HistoryFailure(path, revision);
        EXPECT_EQ(history.status, status);
        EXPECT_TRUE(history.error);
        const Outcome tree = TreeFailure(path, revision);
        EXPECT_EQ(tree.status, status);
        EXPECT_TRUE(tree.error);
    }

    static std::u16string Number(int revision)
    {
        return DecodeName(std::to_string(revision));
    }

    const SvnRepository repository;
};

} // namespace tarnwell::test
