#include "module/ftptest.h"

#include <tarnwell/classes.h>

namespace tarnwell::test
{

FtpModuleTest::FtpModuleTest() : SystemTest(CLSID_FTPFileSystem, {}) {}

void FtpModuleTest::Use(const std::u16string& server, const std::u16string& folder)
{
    base_ = u"ftp://" + server + u"/" + folder;
    host_->credentials = {S_OK, u"ftp", u"secret", server};
}

std::u16string FtpModuleTest::Address(const std::u16string& path) const
{
    return base_ + path;
}

std::vector<std::u16string> FtpModuleTest::Names(const std::u16string& path) const
{
    return NamesOf(Contents(Address(path)));
}

Outcome FtpModuleTest::Put(const std::u16string& path, std::string_view bytes) const
{
    const auto file = File(Address(path));
    return OutcomeOf([&] {
        ComPtr<IFileStream> stream;
        HRESULT status = file->Open(writeAccess, createAlways, stream.Out());
        if (SUCCEEDED(status) && !bytes.empty())
            status = Write(stream, bytes);
        return SUCCEEDED(status) ? stream->Close() : status;
    });
}

Outcome FtpModuleTest::Delete(const std::u16string& path, bool recursive) const
{
    const auto item = File(Address(path)).As<IFileSystemItem>();
    return OutcomeOf(
        [&] { return item->Delete(VARIANT_TRUE, recursive ? VARIANT_TRUE : VARIANT_FALSE); });
}

Outcome FtpModuleTest::Create(const std::u16string& path, bool recursive) const
{
    const auto folder = Folder(Address(path));
    return OutcomeOf([&] { return folder->Create(recursive ? VARIANT_TRUE : VARIANT_FALSE); });
}

Outcome FtpModuleTest::Copy(const std::u16string& from, const std::u16string& to,
                            ICopyProgress* progress) const
{
    return OutcomeOf(
        [&] { return system->CopyItem(Ole(Address(from)), Ole(Address(to)), progress); });
}

Outcome FtpModuleTest::Find(const std::u16string& path) const
{
    ComPtr<IFile> file;
    return OutcomeOf([&] { return system->GetFile(Ole(Address(path)), VARIANT_TRUE, file.Out()); });
}

} // namespace tarnwell::test
