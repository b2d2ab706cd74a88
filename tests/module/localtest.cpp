#include "module/localtest.h"

namespace tarnwell::test
{

namespace
{

namespace fs = std::filesystem;

VARIANT_BOOL Bool(bool value)
{
    return value ? VARIANT_TRUE : VARIANT_FALSE;
}

} // namespace

LocalTest::LocalTest() : SystemTest(CLSID_Win32FileSystem, {}) {}

ComPtr<IFile> LocalTest::File(const std::u16string& path)
{
    ComPtr<IFile> file;
    EXPECT_THAT(OutcomeOf([&] { return system->GetFile(Ole(path), VARIANT_TRUE, file.Out()); }),
                Succeeded());
    return file;
}

ComPtr<IFolder> LocalTest::Folder(const std::u16string& path)
{
    ComPtr<IFolder> found;
    EXPECT_THAT(OutcomeOf([&] { return system->GetFolder(Ole(path), VARIANT_TRUE, found.Out()); }),
                Succeeded());
    return found;
}

ComPtr<IFileStream> LocalTest::Open(const std::u16string& path, std::uint32_t access,
                                    std::uint32_t disposition)
{
    const ComPtr<IFile> file = NewFile(path);
    ComPtr<IFileStream> stream;
    EXPECT_THAT(OutcomeOf([&] { return file->Open(access, disposition, stream.Out()); }),
                Succeeded());
    return stream;
}

Outcome LocalTest::GetFile(const std::u16string& path, bool mustExist)
{
    ComPtr<IFile> file;
    Outcome outcome =
        OutcomeOf([&] { return system->GetFile(Ole(path), Bool(mustExist), file.Out()); });
    EXPECT_EQ(outcome.status == S_OK, static_cast<bool>(file));
    return outcome;
}

Outcome LocalTest::GetFolder(const std::u16string& path, bool mustExist)
{
    ComPtr<IFolder> found;
    Outcome outcome =
        OutcomeOf([&] { return system->GetFolder(Ole(path), Bool(mustExist), found.Out()); });
    EXPECT_EQ(outcome.status == S_OK, static_cast<bool>(found));
    return outcome;
}

std::u16string LocalTest::Put(const std::u16string& name, std::string_view bytes)
{
    const std::u16string path = folder / name;
    WriteBytes(path, bytes);
    return path;
}

std::u16string LocalTest::MakeDirectory(const std::u16string& name)
{
    const std::u16string path = folder / name;
    fs::create_directory(fs::path(path));
    return path;
}

bool LocalTest::Exists(const std::u16string& path)
{
    return fs::exists(fs::symlink_status(fs::path(path)));
}

} // namespace tarnwell::test
