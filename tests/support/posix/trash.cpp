#include "support/posix/trash.h"

#include <fstream>
#include <iterator>
#include <stdexcept>

namespace tarnwell::test
{

namespace
{

namespace fs = std::filesystem;

std::string Unescaped(const std::string& text)
{
    std::string bytes;
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        if (text[i] != '%')
        {
            bytes += text[i];
            continue;
        }
        bytes += static_cast<char>(std::stoi(text.substr(i + 1, 2), nullptr, 16));
        i += 2;
    }
    return bytes;
}

} // namespace

std::optional<fs::path> Trash::OriginOf(const std::string& name) const
{
    const fs::path info = Root() / "info" / (name + ".trashinfo");
    if (!fs::exists(info))
        return std::nullopt;
    std::ifstream file(info);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    const std::string key = "\nPath=";
    const std::size_t start = text.find(key) + key.size();
    return Unescaped(text.substr(start, text.find('\n', start) - start));
}

std::size_t Trash::Count() const
{
    if (!fs::exists(Root()))
        return 0;
    const fs::directory_iterator files(Root() / "files");
    return static_cast<std::size_t>(std::distance(begin(files), end(files)));
}

void Trash::Restore(const std::string& name) const
{
    const std::optional<fs::path> origin = OriginOf(name);
    if (!origin || fs::exists(fs::symlink_status(*origin)))
        throw std::runtime_error("there is nothing to restore, or no place for it: " + name);
    fs::rename(*this / name, *origin);
    fs::remove(Root() / "info" / (name + ".trashinfo"));
}

} // namespace tarnwell::test
