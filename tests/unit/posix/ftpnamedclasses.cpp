// Which class and which interface FTP's failures name.
#include "unit/ftpobjects.h"
#include "unit/posix/namedclasses.h"

#include <tarnwell/classes.h>

namespace tarnwell::test
{
namespace
{

class FtpNamedClasses : public FtpObjectTest
{
protected:
    // That `call` fails, which the operation `failing` of the platform makes it do, and what names.
    template <class Call>
    void Expect(const GUID& classId, const GUID& interfaceId, const char* failing, Call&& call)
    {
        SCOPED_TRACE(failing);
        internet.Fail(failing, ERROR_INTERNET_EXTENDED_ERROR, u"550 No.");
        ClearError();
        EXPECT_TRUE(Names(classId, std::forward<Call>(call)));
        const auto error = TakeError();
        ASSERT_TRUE(error);
        EXPECT_TRUE(error->interfaceId == interfaceId);
    }
};

TEST_F(FtpNamedClasses, OfTheFileSystem)
{
    ComPtr<IFile> file;
    FakeItemList list({Address(u"d/a")});
    Expect(CLSID_FTPFileSystem, IID_IFileSystem, "FtpFindFirstFileW",
           [&] { return system->GetFile(Wide(Address(u"d/a")), VARIANT_TRUE, file.Out()); });
    Expect(CLSID_FTPFileSystem, IID_IFileSystem, "FtpOpenFileW",
           [&] { return system->CopyItem(Wide(Address(u"f")), Wide(Address(u"g")), nullptr); });
    Expect(CLSID_FTPFileSystem, IID_IFileSystem, "FtpDeleteFileW",
           [&] { return system->DeleteItems(&list, VARIANT_TRUE, VARIANT_FALSE); });
}

TEST_F(FtpNamedClasses, OfFiles)
{
    const auto file = File(u"f");
    const auto item = file.As<IFileSystemItem>();
    ComPtr<IFileStream> stream;
    std::uint32_t number = 0;
    std::uint64_t time = 0;
    Expect(CLSID_FTPFile, IID_IFile, "FtpFindFirstFileW",
           [&] { return file->GetSizeLow(&number); });
    Expect(CLSID_FTPFile, IID_IFile, "FtpFindFirstFileW",
           [&] { return file->GetSizeHigh(&number); });
    Expect(CLSID_FTPFile, IID_IFileSystemItem, "FtpFindFirstFileW",
           [&] { return item->GetModifiedTime(&time); });
    Expect(CLSID_FTPFile, IID_IFileSystemItem, "FtpFindFirstFileW",
           [&] { return item->GetAttributes(&number); });
    Expect(CLSID_FTPFile, IID_IFile, "FtpOpenFileW",
           [&] { return file->Open(GENERIC_READ, OPEN_EXISTING, stream.Out()); });
    Expect(CLSID_FTPFile, IID_IFileSystemItem, "FtpDeleteFileW",
           [&] { return item->Delete(VARIANT_TRUE, VARIANT_FALSE); });
}

TEST_F(FtpNamedClasses, OfFolders)
{
    const auto folder = Folder(u"d");
    const auto item = folder.As<IFileSystemItem>();
    ComPtr<IFolderContents> contents;
    std::uint32_t attributes = 0;
    Expect(CLSID_FTPFolder, IID_IFileSystemItem, "FtpFindFirstFileW",
           [&] { return item->GetAttributes(&attributes); });
    Expect(CLSID_FTPFolder, IID_IFolder, "FtpFindFirstFileW",
           [&] { return folder->GetContents(contents.Out()); });
    Expect(CLSID_FTPFolder, IID_IFolder, "FtpCreateDirectoryW",
           [&] { return folder->Create(VARIANT_FALSE); });
    Expect(CLSID_FTPFolder, IID_IFileSystemItem, "FtpRemoveDirectoryW",
           [&] { return item->Delete(VARIANT_TRUE, VARIANT_FALSE); });
}

TEST_F(FtpNamedClasses, OfContents)
{
    const auto contents = Contents(u"d");
    ComPtr<IFileSystemItem> item;
    Expect(CLSID_FTPFolderContents, IID_IFolderContents, "none",
           [&] { return contents->GetItem(2, item.Out()); });
}

// A stream has no class of its own.
TEST_F(FtpNamedClasses, OfStreams)
{
    char byte = 'x';
    const auto reader = Opened(u"f").As<::ISequentialStream>();
    Expect(CLSID_FTPFile, IidOf<::ISequentialStream>(), "InternetReadFile",
           [&] { return reader->Read(&byte, 1, nullptr); });
    const auto writer = Opened(u"g", GENERIC_WRITE).As<::ISequentialStream>();
    Expect(CLSID_FTPFile, IidOf<::ISequentialStream>(), "InternetWriteFile",
           [&] { return writer->Write(&byte, 1, nullptr); });
}

} // namespace
} // namespace tarnwell::test
