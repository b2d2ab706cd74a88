#include "system.h"

#include "platform/windows/units.h"

namespace tarnwell::host
{

std::filesystem::path FilePath(const std::u16string& path)
{
    return ToWide(path);
}

std::u16string FromPath(const std::filesystem::path& path)
{
    return FromWide(path.native());
}

std::u16string AbsolutePath(const std::u16string& path)
{
    if (path.empty())
        return path;
    return FromPath(std::filesystem::absolute(FilePath(path)).lexically_normal());
}

} // namespace tarnwell::host
