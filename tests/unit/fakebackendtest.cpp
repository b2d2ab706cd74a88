#include "unit/fakebackendtest.h"

#include "platform/wide.h"

namespace tarnwell::test
{

FakeBackendTest::FakeBackendTest()
{
    Server() = {};
    EXPECT_EQ(MakeInstance<FakeFileSystem>(nullptr, IID_IFileSystem, system.OutVoid()), S_OK);
    EXPECT_EQ(system.As<IFileSystemInit>()->SetHost(host->Unknown()), S_OK);
    ClearError();
}

FakeBackendTest::~FakeBackendTest()
{
    system.Reset();
    EXPECT_EQ(host->References(), 1U) << "somebody still holds the host object";
    Server() = {};
}

ComPtr<IFile> FakeBackendTest::File(const std::u16string& address)
{
    ComPtr<IFile> file;
    EXPECT_EQ(system->GetFile(Wide(address), VARIANT_FALSE, file.Out()), S_OK);
    return file;
}

ComPtr<IFolder> FakeBackendTest::Folder(const std::u16string& address)
{
    ComPtr<IFolder> folder;
    EXPECT_EQ(system->GetFolder(Wide(address), VARIANT_FALSE, folder.Out()), S_OK);
    return folder;
}

ComPtr<IFolderContents> FakeBackendTest::Contents(const std::vector<FSItem>& items)
{
    Server().listing.clear();
    for (const FSItem& item : items)
        Server().listing.push_back(std::make_shared<FSItem>(item));
    ComPtr<IFolderContents> contents;
    EXPECT_EQ(Folder(u"ftp://host/folder")->GetContents(contents.Out()), S_OK);
    return contents;
}

} // namespace tarnwell::test
