#include "system.h"

#include "platform/windows/units.h"

namespace tarnwell::host
{

std::filesystem::path FilePath(const std::u16string& path)
{
    return ToWide(path);
}

std::u16string AbsolutePath(const std::u16string& path)
{
    if (path.empty())
        return path;
    return FromWide(std::filesystem::absolute(ToWide(path)).lexically_normal().wstring());
}

} // namespace tarnwell::host
