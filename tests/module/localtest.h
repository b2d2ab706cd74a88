// The local file system of the finished module, in a temporary folder.
#pragma once

#include "module/systemtest.h"

namespace tarnwell::test
{

class LocalTest : public SystemTest
{
protected:
    LocalTest();

    // The item of a path, which must be there.
    ComPtr<IFile> File(const std::u16string& path);
    ComPtr<IFolder> Folder(const std::u16string& path);
    // The same where it needn't be.
    ComPtr<IFile> NewFile(const std::u16string& path)
    {
        return SystemTest::File(path);
    }
    ComPtr<IFolder> NewFolder(const std::u16string& path)
    {
        return SystemTest::Folder(path);
    }

    ComPtr<IFolderContents> List(const std::u16string& path)
    {
        return Contents(path);
    }
    ComPtr<IFileStream> Open(const std::u16string& path, std::uint32_t access = readAccess,
                             std::uint32_t disposition = openExisting);

    // The outcome of a lookup; what it makes goes away again.
    Outcome GetFile(const std::u16string& path, bool mustExist = true);
    Outcome GetFolder(const std::u16string& path, bool mustExist = true);

    // A file in the folder with these bytes; gives its path.
    std::u16string Put(const std::u16string& name, std::string_view bytes = "content");
    std::u16string MakeDirectory(const std::u16string& name);
    static bool Exists(const std::u16string& path);

    TempFolder folder;
    const ComPtr<FakeHost>& host = host_;
};

} // namespace tarnwell::test
