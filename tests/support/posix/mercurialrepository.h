// A real Mercurial repository, made by the real client.
#pragma once

#include "support/tempfolder.h"

#include <string>

namespace tarnwell::test
{

class MercurialRepository
{
public:
    MercurialRepository();

    std::u16string operator/(std::u16string_view name) const
    {
        return folder_ / name;
    }

    // Runs "hg `arguments`" in the repository, with no settings but its own; what it prints,
    // without the line feed at its end. Throws if it fails.
    std::string Hg(const std::string& arguments) const;

    // Writes the file and commits it; the changeset's number. `options` go to the commit.
    std::string Commit(std::u16string_view name, std::string_view bytes,
                       const std::string& description, const std::string& options = {}) const;

private:
    TempFolder folder_;
};

} // namespace tarnwell::test
