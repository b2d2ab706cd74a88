// A real Git repository, made by the real client.
#pragma once

#include "support/tempfolder.h"

#include <string>
#include <vector>

namespace tarnwell::test
{

class Repository
{
public:
    // Without clients, an empty folder.
    Repository();

    const TempFolder& Folder() const
    {
        return folder_;
    }
    std::u16string operator/(std::u16string_view name) const
    {
        return folder_ / name;
    }

    // Runs Git in the repository, with arguments between blanks; what it prints, without the line
    // feed at its end. Throws if it fails.
    std::string Git(std::string_view words) const;
    // The same with any arguments.
    std::string Run(std::vector<std::string> arguments) const;

    // Writes the file and commits it; the commit's hash.
    std::string Commit(std::u16string_view name, std::string_view bytes, const std::string& subject,
                       const std::string& author = "Ann") const;

    // Takes an object away from the repository, as a damaged or a partial one lacks it.
    void RemoveObject(const std::string& name) const;

private:
    TempFolder folder_;
};

} // namespace tarnwell::test
