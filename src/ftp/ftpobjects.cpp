#include "ftp/ftpobjects.h"

#include "frame/boundary.h"
#include "frame/exception.h"
#include "frame/messages.h"
#include "frame/text.h"
#include "ftp/ftpcopy.h"
#include "ftp/ftpoperations.h"
#include "ftp/ftpuri.h"

#include <tarnwell/classes.h>

namespace tarnwell
{

namespace
{

constexpr AddressKind ftpItems{MakeAddress<FTPUri>};

bool CanBeOpened(std::uint32_t access, std::uint32_t disposition)
{
    return access == GENERIC_WRITE || (access == GENERIC_READ && disposition == OPEN_EXISTING);
}

} // namespace

FTPFileObject::FTPFileObject() : FileObject(CLSID_FTPFile, ftpItems) {}

HRESULT FTPFileObject::Open(std::uint32_t access, std::uint32_t disposition, IFileStream** stream)
{
    return AtBoundary(Reporter{ClassId(), IID_IFile}, NullPointer::Bare, stream, [&] {
        if (!CanBeOpened(access, disposition))
            throw ComException(E_INVALIDARG,
                               FormatMessageById(MessageId::OpenFailed, {Address().GetText()}),
                               At(ftpSource));
        *stream = FtpOpenUri(*this, Address(), access).Detach();
        return S_OK;
    });
}

HRESULT FTPFileObject::Delete(VARIANT_BOOL noConfirm, VARIANT_BOOL recursive)
{
    return AtBoundary(Reporter{ClassId(), IID_IFileSystemItem}, [&] {
        FtpDeleteUri(*this, Address(), IsTrue(noConfirm), IsTrue(recursive));
        return S_OK;
    });
}

std::shared_ptr<FSItem> FTPFileObject::ReadItemInfo(const Uri& uri)
{
    return FtpQueryItem(*this, uri);
}

FTPFolderObject::FTPFolderObject() : FolderObject(CLSID_FTPFolder, ftpItems) {}

HRESULT FTPFolderObject::Create(VARIANT_BOOL recursive)
{
    return AtBoundary(Reporter{ClassId(), IID_IFolder}, [&] {
        FtpCreateFolderUri(*this, Address(), IsTrue(recursive));
        return S_OK;
    });
}

HRESULT FTPFolderObject::Delete(VARIANT_BOOL noConfirm, VARIANT_BOOL recursive)
{
    return AtBoundary(Reporter{ClassId(), IID_IFileSystemItem}, [&] {
        FtpDeleteUri(*this, Address(), IsTrue(noConfirm), IsTrue(recursive));
        return S_OK;
    });
}

ComPtr<IFolderContents> FTPFolderObject::MakeContents()
{
    return MakeFolderContents<FTPFolderContentsObject>(HostObject(),
                                                       FtpQueryFolderItems(*this, Address()));
}

std::shared_ptr<FSItem> FTPFolderObject::ReadItemInfo(const Uri& uri)
{
    return FtpQueryItem(*this, uri);
}

FTPFolderContentsObject::FTPFolderContentsObject()
    : FolderContentsObject(CLSID_FTPFolderContents, MakeListedItem<FTPFileObject>,
                           MakeListedItem<FTPFolderObject>)
{
}

FTPFileSystemObject::FTPFileSystemObject() : FileSystemObject(CLSID_FTPFileSystem) {}

HRESULT FTPFileSystemObject::CopyItem(const OLECHAR* source, const OLECHAR* target,
                                      ICopyProgress* progress)
{
    return AtBoundary(Reporter{ClassId(), IID_IFileSystem}, [&] {
        const FTPUri from(FromHost(source));
        const FTPUri to(FromHost(target));
        FtpCopyUri(*this, from, to, progress);
        return S_OK;
    });
}

HRESULT FTPFileSystemObject::DeleteItems(IItemList* items, VARIANT_BOOL noConfirm,
                                         VARIANT_BOOL recursive)
{
    if (items == nullptr)
        return E_POINTER;
    return AtBoundary(Reporter{ClassId(), IID_IFileSystem}, [&] {
        FtpDeleteUriList(*this, *items, IsTrue(noConfirm), IsTrue(recursive));
        return S_OK;
    });
}

ComPtr<IFile> FTPFileSystemObject::CreateFileObject(const std::u16string& path, bool mustExist)
{
    return MakeItem<FTPFileObject, IFile>(path, mustExist);
}

ComPtr<IFolder> FTPFileSystemObject::CreateFolderObject(const std::u16string& path, bool mustExist)
{
    return MakeItem<FTPFolderObject, IFolder>(path, mustExist);
}

} // namespace tarnwell
