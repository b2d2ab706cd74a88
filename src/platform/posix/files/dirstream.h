// An open folder, and its entries "." and "..".
#pragma once

#include <dirent.h>
#include <memory>
#include <string_view>

namespace tarnwell::posix
{

struct CloseDirStream
{
    void operator()(DIR* stream) const
    {
        closedir(stream);
    }
};

using DirStream = std::unique_ptr<DIR, CloseDirStream>;

// The folder itself or the one above.
constexpr bool IsDots(std::string_view name)
{
    return name == "." || name == "..";
}

} // namespace tarnwell::posix
