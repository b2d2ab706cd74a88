// The FTP file system as the host sees it. It has no revisions.
#pragma once

#include "addressed/fileobject.h"
#include "addressed/filesystemobject.h"
#include "addressed/foldercontentsobject.h"
#include "addressed/folderobject.h"

namespace tarnwell
{

class FTPFileObject : public FileObject
{
public:
    FTPFileObject();

    // To read what exists, or to write, whatever exists.
    HRESULT STDMETHODCALLTYPE Open(std::uint32_t access, std::uint32_t disposition,
                                   IFileStream** stream) override;
    HRESULT STDMETHODCALLTYPE Delete(VARIANT_BOOL noConfirm, VARIANT_BOOL recursive) override;

protected:
    ~FTPFileObject() override = default;

    std::shared_ptr<FSItem> ReadItemInfo(const Uri& uri) override;
};

class FTPFolderObject : public FolderObject
{
public:
    FTPFolderObject();

    HRESULT STDMETHODCALLTYPE Create(VARIANT_BOOL recursive) override;
    HRESULT STDMETHODCALLTYPE Delete(VARIANT_BOOL noConfirm, VARIANT_BOOL recursive) override;

protected:
    ~FTPFolderObject() override = default;

    ComPtr<IFolderContents> MakeContents() override;
    std::shared_ptr<FSItem> ReadItemInfo(const Uri& uri) override;
};

class FTPFolderContentsObject : public FolderContentsObject
{
public:
    FTPFolderContentsObject();

protected:
    ~FTPFolderContentsObject() = default;
};

class FTPFileSystemObject : public FileSystemObject
{
public:
    FTPFileSystemObject();

    HRESULT STDMETHODCALLTYPE CopyItem(const OLECHAR* source, const OLECHAR* target,
                                       ICopyProgress* progress) override;
    HRESULT STDMETHODCALLTYPE DeleteItems(IItemList* items, VARIANT_BOOL noConfirm,
                                          VARIANT_BOOL recursive) override;

protected:
    ~FTPFileSystemObject() = default;

    ComPtr<IFile> CreateFileObject(const std::u16string& path, bool mustExist) override;
    ComPtr<IFolder> CreateFolderObject(const std::u16string& path, bool mustExist) override;
};

} // namespace tarnwell
