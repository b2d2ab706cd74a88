#include "addressed/filesystemobject.h"

#include "frame/boundary.h"
#include "frame/text.h"

namespace tarnwell
{

std::u16string CombineAddresses(std::u16string base, std::u16string_view relative)
{
    if (relative.starts_with(u'/'))
        relative.remove_prefix(1);
    if (!base.ends_with(u'/'))
        base += u'/';
    return base.append(relative);
}

HRESULT FileSystemObject::SetHost(::IUnknown* host)
{
    SetHostObject(host);
    return S_OK;
}

HRESULT FileSystemObject::GetFolder(const OLECHAR* path, VARIANT_BOOL mustExist, IFolder** folder)
{
    return AtBoundary({classId_, IID_IFileSystem}, NullPointer::Bare, folder, [&] {
        *folder = CreateFolderObject(FromHost(path), IsTrue(mustExist)).Detach();
        return S_OK;
    });
}

HRESULT FileSystemObject::GetFile(const OLECHAR* path, VARIANT_BOOL mustExist, IFile** file)
{
    return AtBoundary({classId_, IID_IFileSystem}, NullPointer::Bare, file, [&] {
        *file = CreateFileObject(FromHost(path), IsTrue(mustExist)).Detach();
        return S_OK;
    });
}

HRESULT FileSystemObject::CopyItem(const OLECHAR*, const OLECHAR*, ICopyProgress*)
{
    return E_NOTIMPL;
}

HRESULT FileSystemObject::CreateTempFile(const OLECHAR*, BSTR* tempPath)
{
    if (tempPath != nullptr)
        *tempPath = nullptr;
    return E_NOTIMPL;
}

HRESULT FileSystemObject::DeleteItems(IItemList*, VARIANT_BOOL, VARIANT_BOOL)
{
    return E_NOTIMPL;
}

HRESULT FileSystemObject::GetOperationMask(std::uint32_t kind, ::IUnknown* other,
                                           std::uint32_t* mask)
{
    return AtBoundary({classId_, IID_IFileSystem}, NullPointer::Bare, mask, [&] {
        *mask = everyOperation;
        const auto held = ComPtr<::IUnknown>::Share(other);
        *mask = GetOperationMaskFor(kind, other);
        return S_OK;
    });
}

HRESULT FileSystemObject::CombinePath(const OLECHAR* base, const OLECHAR* relative, BSTR* result)
{
    return AtBoundary({classId_, IID_IFileSystem}, NullPointer::Bare, result, [&] {
        return ToHost(CombineAddresses(FromHost(base), FromHost(relative)), result);
    });
}

std::uint32_t FileSystemObject::GetOperationMaskFor(std::uint32_t kind, ::IUnknown*) const
{
    return kind <= 1 ? 5 : everyOperation;
}

HRESULT RevisionsFileSystemObject::HasRevisions(const OLECHAR* path, std::uint32_t,
                                                VARIANT_BOOL* has)
{
    return AtBoundary({ClassId(), IID_IFileSystemRevisions}, NullPointer::Published, has, [&] {
        *has = RevisionsOrNone(path).empty() ? VARIANT_FALSE : VARIANT_TRUE;
        return S_OK;
    });
}

HRESULT RevisionsFileSystemObject::GetRevisions(const OLECHAR* path, std::uint32_t,
                                                IRevisions** revisions)
{
    return AtBoundary({ClassId(), IID_IFileSystemRevisions}, NullPointer::Published, revisions,
                      [&] { return MakeRevisions(RevisionsOrNone(path), ClassId(), revisions); });
}

RevisionList RevisionsFileSystemObject::RevisionsOrNone(const OLECHAR* path) noexcept
{
    try
    {
        return ReadRevisions(FromHost(path));
    }
    catch (...)
    {
        return {};
    }
}

} // namespace tarnwell
