#include "faults/local.h"

#include "local/filesystem.h"

#include <filesystem>
#include <iterator>

namespace tarnwell::test
{

namespace fs = std::filesystem;

Local::Local()
{
    WriteBytes(Path(u"a.txt"), content);
    fs::create_directory(folder.Path() / "sub");
    WriteBytes(Path(u"sub/b.txt"), "b");
    EXPECT_EQ(MakeInstance<CWin32FileSystemObject>(nullptr, IID_IFileSystem, system.OutVoid()),
              S_OK);
}

ComPtr<IFile> Local::File(std::u16string_view name) const
{
    ComPtr<IFile> file;
    EXPECT_EQ(system->GetFile(Wide(Path(name)), VARIANT_FALSE, file.Out()), S_OK);
    return file;
}

ComPtr<IFolder> Local::Folder(std::u16string_view name) const
{
    ComPtr<IFolder> found;
    EXPECT_EQ(system->GetFolder(Wide(Path(name)), VARIANT_FALSE, found.Out()), S_OK);
    return found;
}

ComPtr<IFileStream> Local::Open(DWORD access) const
{
    ComPtr<IFileStream> stream;
    EXPECT_EQ(File()->Open(access, OPEN_EXISTING, stream.Out()), S_OK);
    return stream;
}

std::optional<std::string> Local::Content() const
{
    if (!Has(u"a.txt"))
        return std::nullopt;
    return ReadBytes(Path(u"a.txt"));
}

bool Local::Has(std::u16string_view name) const
{
    return fs::exists(fs::path(Path(name)));
}

Held Held::Now()
{
    const fs::directory_iterator descriptors("/proc/self/fd");
    return {static_cast<std::size_t>(std::distance(begin(descriptors), end(descriptors))),
            ModuleLockCount()};
}

} // namespace tarnwell::test
