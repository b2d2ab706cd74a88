#include "faults/clientsystem.h"

namespace tarnwell::test
{

FailingClientSystem::~FailingClientSystem()
{
    EXPECT_TRUE(std::filesystem::is_empty(temporary_.Path()));
}

HRESULT FailingClientSystem::List() const
{
    ComPtr<IFolder> folder;
    HRESULT status = system_->GetFolder(Wide(folder_), VARIANT_FALSE, folder.Out());
    if (FAILED(status))
        return status;
    ComPtr<IFolderContents> contents;
    status = folder->GetContents(contents.Out());
    EXPECT_EQ(status == S_OK, static_cast<bool>(contents));
    return status;
}

HRESULT FailingClientSystem::Stat() const
{
    ComPtr<IFile> file;
    const HRESULT status = system_->GetFile(Wide(file_), VARIANT_FALSE, file.Out());
    std::uint32_t size = 0;
    return FAILED(status) ? status : file->GetSizeLow(&size);
}

HRESULT FailingClientSystem::Open() const
{
    ComPtr<IFile> file;
    HRESULT status = system_->GetFile(Wide(file_), VARIANT_FALSE, file.Out());
    if (FAILED(status))
        return status;
    ComPtr<IFileStream> stream;
    status = file->Open(GENERIC_READ, OPEN_EXISTING, stream.Out());
    EXPECT_EQ(status == S_OK, static_cast<bool>(stream));
    return status;
}

std::uint32_t FailingClientSystem::Revisions() const
{
    ComPtr<IRevisions> revisions;
    EXPECT_EQ(system_.As<IFileSystemRevisions>()->GetRevisions(Wide(file_), 0, revisions.Out()),
              S_OK);
    std::uint32_t count = 0;
    EXPECT_EQ(revisions->GetCount(&count), S_OK);
    return count;
}

} // namespace tarnwell::test
