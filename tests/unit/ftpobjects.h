// The objects of the FTP file system, as a host has them, on a server that is a record in the test.
#pragma once

#include "ftp/ftpobjects.h"
#include "module/outcome.h"
#include "platform/wide.h"
#include "support/fakeprogress.h"
#include "unit/ftptest.h"

namespace tarnwell::test
{

class FtpObjectTest : public FtpTest
{
protected:
    FtpObjectTest()
    {
        internet.folders[u""] = {{u"d", FILE_ATTRIBUTE_DIRECTORY}, {u"f"}};
        internet.folders[u"d"] = {{u"a"}, {u"sub", FILE_ATTRIBUTE_DIRECTORY}};
        internet.folders[u"d/sub"] = {};
        internet.files[u"f"] = "content";
        EXPECT_EQ(MakeInstance<FTPFileSystemObject>(nullptr, IID_IFileSystem, system.OutVoid()),
                  S_OK);
        system.As<IFileSystemInit>()->SetHost(host->Unknown());
    }

    static std::u16string Address(const std::u16string& path)
    {
        return u"ftp://u:hush@h/" + path;
    }
    ComPtr<IFile> File(const std::u16string& path) const
    {
        ComPtr<IFile> file;
        EXPECT_EQ(system->GetFile(Wide(Address(path)), VARIANT_FALSE, file.Out()), S_OK);
        return file;
    }
    ComPtr<IFolder> Folder(const std::u16string& path) const
    {
        ComPtr<IFolder> folder;
        EXPECT_EQ(system->GetFolder(Wide(Address(path)), VARIANT_FALSE, folder.Out()), S_OK);
        return folder;
    }
    ComPtr<IFolderContents> Contents(const std::u16string& path) const
    {
        ComPtr<IFolderContents> contents;
        EXPECT_EQ(Folder(path)->GetContents(contents.Out()), S_OK);
        return contents;
    }
    ComPtr<IFileStream> Opened(const std::u16string& path, DWORD access = GENERIC_READ) const
    {
        ComPtr<IFileStream> stream;
        EXPECT_EQ(File(path)->Open(access, OPEN_EXISTING, stream.Out()), S_OK);
        return stream;
    }

    ComPtr<IFileSystem> system;
};

} // namespace tarnwell::test
