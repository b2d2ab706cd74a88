// A folder of a test's own, and plain ways to put files into it.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace tarnwell::test
{

// Made with a name of its own below the system's temporary folder, and removed with all that is
// in it, read-only or not.
class TempFolder
{
public:
    TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    ~TempFolder();

    // Without a separator at its end.
    const std::filesystem::path& Path() const
    {
        return path_;
    }
    std::u16string Text() const
    {
        return path_.u16string();
    }
    // The path of something in the folder.
    std::u16string operator/(std::u16string_view name) const;

private:
    std::filesystem::path path_;
};

// `parent`, the platform's separator and `name`.
std::u16string Joined(std::u16string_view parent, std::u16string_view name);

// Both throw if they don't come to their end.
void WriteBytes(const std::u16string& path, std::string_view bytes);
std::string ReadBytes(const std::u16string& path);

} // namespace tarnwell::test
