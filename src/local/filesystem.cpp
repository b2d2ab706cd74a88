#include "local/filesystem.h"

#include "frame/boundary.h"
#include "frame/paths.h"
#include "frame/revisions.h"
#include "frame/text.h"
#include "local/earlierversions.h"
#include "local/lookup.h"

namespace tarnwell
{

namespace
{

constexpr Reporter systemReporter{CLSID_Win32FileSystem, IID_IFileSystem};
constexpr Reporter revisionsReporter{CLSID_Win32FileSystem, IID_IFileSystemRevisions};

// The operations that are offered for items of a kind, as hosts understand the bits.
constexpr std::uint32_t OperationMaskFor(std::uint32_t kind)
{
    return kind <= 1 ? 7 : 65535;
}

// Any failure of a lookup has this one text, also where a folder stands in place of a file.
HRESULT ReportLookup(HRESULT status, const std::u16string& path)
{
    if (SUCCEEDED(status))
        return S_OK;
    return PublishFailure(systemReporter, MessageId::ItemFailed, status, {path});
}

} // namespace

HRESULT CWin32FileSystemObject::SetHost(::IUnknown* host)
{
    host_ = ComPtr<::IUnknown>::Share(host).As<IHostWindow>();
    return S_OK;
}

HRESULT CWin32FileSystemObject::GetFolder(const OLECHAR* path, VARIANT_BOOL mustExist,
                                          IFolder** folder)
{
    return AtBoundary(systemReporter, NullPointer::Published, folder,
                      [&]
                      {
                          const std::u16string text = FromHost(path);
                          return ReportLookup(
                              OpenFolderItem(text, IsTrue(mustExist), host_, folder), text);
                      });
}

HRESULT CWin32FileSystemObject::GetFile(const OLECHAR* path, VARIANT_BOOL mustExist, IFile** file)
{
    return AtBoundary(systemReporter, NullPointer::Published, file,
                      [&]
                      {
                          const std::u16string text = FromHost(path);
                          return ReportLookup(OpenFileItem(text, IsTrue(mustExist), host_, file),
                                              text);
                      });
}

HRESULT CWin32FileSystemObject::GetOperationMask(std::uint32_t kind, ::IUnknown* other,
                                                 std::uint32_t* mask)
{
    return AtBoundary(systemReporter, NullPointer::Published, mask,
                      [&]
                      {
                          const auto held = ComPtr<::IUnknown>::Share(other);
                          *mask = OperationMaskFor(kind);
                          return S_OK;
                      });
}

HRESULT CWin32FileSystemObject::CombinePath(const OLECHAR* base, const OLECHAR* relative,
                                            BSTR* result)
{
    return AtBoundary(systemReporter, NullPointer::Published, result,
                      [&]
                      {
                          std::u16string path = FromHost(base);
                          AppendSeparator(path);
                          return ToHost(path + FromHost(relative), result);
                      });
}

HRESULT CWin32FileSystemObject::HasRevisions(const OLECHAR* path, std::uint32_t, VARIANT_BOOL* has)
{
    return AtBoundary(revisionsReporter, NullPointer::Published, has,
                      [&]
                      {
                          *has = HasEarlierVersions(FromHost(path)) ? VARIANT_TRUE : VARIANT_FALSE;
                          return S_OK;
                      });
}

HRESULT CWin32FileSystemObject::GetRevisions(const OLECHAR* path, std::uint32_t,
                                             IRevisions** revisions)
{
    return AtBoundary(revisionsReporter, NullPointer::Published, revisions,
                      [&] {
                          return MakeRevisions(ListEarlierVersions(FromHost(path)),
                                               CLSID_Win32FileSystem, revisions);
                      });
}

// Copying, temporary names and list deletion are not built yet and say so.

HRESULT CWin32FileSystemObject::CopyItem(const OLECHAR* source, const OLECHAR* destination,
                                         ICopyProgress* progress)
{
    return CopyItemEx(source, destination, 0, progress);
}

HRESULT CWin32FileSystemObject::CopyItemEx(const OLECHAR*, const OLECHAR*, std::uint32_t,
                                           ICopyProgress*)
{
    return E_NOTIMPL;
}

HRESULT CWin32FileSystemObject::CreateTempFile(const OLECHAR*, BSTR* tempPath)
{
    return AtBoundary(systemReporter, NullPointer::Published, tempPath, [] { return E_NOTIMPL; });
}

HRESULT CWin32FileSystemObject::DeleteItems(IItemList*, VARIANT_BOOL, VARIANT_BOOL)
{
    return E_NOTIMPL;
}

} // namespace tarnwell
