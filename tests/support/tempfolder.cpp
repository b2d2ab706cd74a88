#include "support/tempfolder.h"

#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;

fs::path MakeFolder()
{
    std::random_device random;
    for (;;)
    {
        const fs::path path =
            fs::temp_directory_path() / ("tarnwell-test-" + std::to_string(random()));
        if (fs::create_directory(path))
            return fs::canonical(path);
    }
}

// What a test has made read-only can't be removed as it is.
void MakeWritable(const fs::path& folder)
{
    std::error_code ignored;
    for (fs::recursive_directory_iterator it(folder, ignored), end; it != end;
         it.increment(ignored))
    {
        if (!it->is_symlink(ignored))
            fs::permissions(it->path(), fs::perms::owner_all, fs::perm_options::add, ignored);
    }
}

} // namespace

TempFolder::TempFolder() : path_(MakeFolder()) {}

TempFolder::~TempFolder()
{
    std::error_code error;
    fs::remove_all(path_, error);
    if (!error)
        return;
    MakeWritable(path_);
    fs::remove_all(path_, error);
}

std::u16string TempFolder::operator/(std::u16string_view name) const
{
    return Joined(Text(), name);
}

std::u16string Joined(std::u16string_view parent, std::u16string_view name)
{
    std::u16string path(parent);
    path += static_cast<char16_t>(fs::path::preferred_separator);
    path += name;
    return path;
}

void WriteBytes(const std::u16string& path, std::string_view bytes)
{
    std::ofstream file(fs::path(path), std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file)
        throw std::runtime_error("can't write " + fs::path(path).string());
}

std::string ReadBytes(const std::u16string& path)
{
    std::ifstream file(fs::path(path), std::ios::binary);
    if (!file)
        throw std::runtime_error("can't read " + fs::path(path).string());
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace tarnwell::test
