// What Subversion's row has of each platform: failures that can be made there.
#pragma once

#include "backends/backend.h"
#include "support/svnrepository.h"

#include <memory>
#include <vector>

namespace tarnwell::test
{

class SubversionData : public BackendData
{
public:
    const SvnRepository& Repository() const
    {
        return repository_;
    }
    // Goes with the data, before the repository.
    void Keep(std::shared_ptr<const void> kept)
    {
        kept_ = std::move(kept);
    }

protected:
    const SvnRepository repository_;

private:
    std::shared_ptr<const void> kept_;
};

std::vector<MadeFailure> SubversionFailuresHere();

} // namespace tarnwell::test
