// Where in which repository an item is: also in linked working trees, submodules and bare
// repositories.
#pragma once

#include <optional>
#include <string>

namespace tarnwell
{

struct GitPlace
{
    std::u16string folder; // of the repository or its working tree, where the client is to run
    std::u16string path;   // below it, with "/" in between; empty for all of it
};

// The innermost repository at or above the path, which needn't exist. Nothing for a relative path,
// and for one that leads up again below the repository.
std::optional<GitPlace> FindGitPlace(const std::u16string& path);

// Whether `path` begins where the file systems do.
bool IsWholePath(const std::u16string& path);

// The local path of a name in the repository.
std::u16string PathInPlace(const GitPlace& place, const std::u16string& name);

} // namespace tarnwell
