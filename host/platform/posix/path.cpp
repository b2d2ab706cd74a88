#include "system.h"

#include <tarnwell/text.h>

namespace tarnwell::host
{

std::filesystem::path FilePath(const std::u16string& path)
{
    return EncodeName(path).value_or(std::string());
}

std::u16string FromPath(const std::filesystem::path& path)
{
    return DecodeName(path.native());
}

std::u16string AbsolutePath(const std::u16string& path)
{
    const std::optional<std::string> bytes = EncodeName(path);
    // A text that names no file stays as it is, for the module to refuse.
    if (!bytes || bytes->empty())
        return path;
    return FromPath(std::filesystem::absolute(*bytes).lexically_normal());
}

} // namespace tarnwell::host
