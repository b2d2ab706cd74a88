// What hosts do with the objects of the finished module, in short.
#pragma once

#include "module/outcome.h"
#include "support/loadedmodule.h"
#include "support/tempfolder.h"

#include <string>
#include <vector>

namespace tarnwell::test
{

inline constexpr std::uint32_t readAccess = 0x80000000;
inline constexpr std::uint32_t writeAccess = 0x40000000;

// Dispositions of IFile::Open.
inline constexpr std::uint32_t createNew = 1;
inline constexpr std::uint32_t createAlways = 2;
inline constexpr std::uint32_t openExisting = 3;
inline constexpr std::uint32_t openAlways = 4;
inline constexpr std::uint32_t truncateExisting = 5;

inline constexpr std::uint32_t readOnlyAttribute = 1;
inline constexpr std::uint32_t folderAttribute = 16;

inline const std::u16string
    separator(1, static_cast<char16_t>(std::filesystem::path::preferred_separator));

// The module beside the test program, loaded at the first call.
const LoadedModule& TheModule();

// A path or name as the module takes it.
const OLECHAR* Ole(const std::u16string& text);

// What the getters of an item say.
struct Facts
{
    std::u16string path;
    std::u16string name;
    std::u16string parent;
    std::uint32_t attributes = 0;
    std::uint64_t size = 0; // of files
    std::uint64_t time = 0;

    friend bool operator==(const Facts&, const Facts&) = default;
};

Facts FactsOf(const ComPtr<IFileSystemItem>& item);

template <class I> Facts FactsOf(const ComPtr<I>& item)
{
    return FactsOf(item.template As<IFileSystemItem>());
}

// All entries of a snapshot, in its order.
std::vector<ComPtr<IFileSystemItem>> ItemsOf(const ComPtr<IFolderContents>& contents);
std::vector<std::u16string> NamesOf(const ComPtr<IFolderContents>& contents);

// The rest of a stream.
std::string ReadAll(const ComPtr<IFileStream>& stream);
HRESULT Write(const ComPtr<IFileStream>& stream, std::string_view bytes);

// Sets the current folder for as long as it lives.
class CurrentFolder
{
public:
    explicit CurrentFolder(const std::filesystem::path& path)
    {
        std::filesystem::current_path(path);
    }
    CurrentFolder(const CurrentFolder&) = delete;
    CurrentFolder& operator=(const CurrentFolder&) = delete;
    ~CurrentFolder()
    {
        std::filesystem::current_path(before_);
    }

private:
    std::filesystem::path before_ = std::filesystem::current_path();
};

} // namespace tarnwell::test
