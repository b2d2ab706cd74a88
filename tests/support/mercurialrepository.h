// A real Mercurial repository, made by the real client.
#pragma once

#include "support/tempfolder.h"

#include <string>
#include <vector>

namespace tarnwell::test
{

class MercurialRepository
{
public:
    // Without clients, an empty folder.
    MercurialRepository();

    std::u16string operator/(std::u16string_view name) const
    {
        return folder_ / name;
    }

    // Runs Mercurial in the repository, with arguments between blanks; what it prints, without the
    // line feed at its end. Throws if it fails.
    std::string Hg(std::string_view words) const;
    // Likewise, with whole arguments.
    std::string Run(const std::vector<std::string>& arguments) const;

    // Writes the file and commits it, with further options; the changeset's number.
    std::string Commit(std::u16string_view name, std::string_view bytes,
                       const std::string& description,
                       const std::vector<std::string>& options = {}) const;

    const TempFolder& Folder() const
    {
        return folder_;
    }

private:
    TempFolder folder_;
};

} // namespace tarnwell::test
