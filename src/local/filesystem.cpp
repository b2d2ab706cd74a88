#include "local/filesystem.h"

#include "frame/boundary.h"
#include "frame/hostuser.h"
#include "frame/paths.h"
#include "frame/revisions.h"
#include "frame/text.h"
#include "local/copy.h"
#include "local/earlierversions.h"
#include "local/localhistory.h"
#include "local/localtree.h"
#include "local/lookup.h"
#include "local/shelldelete.h"
#include "local/tempname.h"

#include <optional>

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

// All failures of a lookup have this text, also that of a folder in the place of a file.
HRESULT ReportLookup(HRESULT status, const std::u16string& path)
{
    if (SUCCEEDED(status))
        return S_OK;
    return PublishFailure(systemReporter, MessageId::ItemFailed, status, {path});
}

// Nothing if no path is to be had.
std::optional<ShellList> ListOf(IItemList& items)
{
    std::int32_t count = 0;
    if (FAILED(items.GetCount(&count)))
        return std::nullopt;
    ShellList list;
    bool isEmpty = true;
    for (std::int32_t i = 0; i < count; ++i)
    {
        Bstr path;
        if (FAILED(items.GetItem(i, path.Out())))
            continue;
        // An empty one would end the list.
        const std::u16string text = FromHost(path.Get());
        isEmpty = isEmpty && text.empty();
        if (!text.empty())
            list.Add(text);
    }
    return isEmpty ? std::nullopt : std::optional(std::move(list));
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
    return AtBoundary(systemReporter, NullPointer::Published, folder, [&] {
        const std::u16string text = FromHost(path);
        return ReportLookup(OpenFolderItem(text, IsTrue(mustExist), host_, folder), text);
    });
}

HRESULT CWin32FileSystemObject::GetFile(const OLECHAR* path, VARIANT_BOOL mustExist, IFile** file)
{
    return AtBoundary(systemReporter, NullPointer::Published, file, [&] {
        const std::u16string text = FromHost(path);
        return ReportLookup(OpenFileItem(text, IsTrue(mustExist), host_, file), text);
    });
}

HRESULT CWin32FileSystemObject::GetOperationMask(std::uint32_t kind, ::IUnknown* other,
                                                 std::uint32_t* mask)
{
    return AtBoundary(systemReporter, NullPointer::Published, mask, [&] {
        const auto held = ComPtr<::IUnknown>::Share(other);
        *mask = OperationMaskFor(kind);
        return S_OK;
    });
}

HRESULT CWin32FileSystemObject::CombinePath(const OLECHAR* base, const OLECHAR* relative,
                                            BSTR* result)
{
    return AtBoundary(systemReporter, NullPointer::Published, result, [&] {
        std::u16string path = FromHost(base);
        AppendSeparator(path);
        return ToHost(path + FromHost(relative), result);
    });
}

HRESULT CWin32FileSystemObject::HasRevisions(const OLECHAR* path, std::uint32_t, VARIANT_BOOL* has)
{
    return AtBoundary(revisionsReporter, NullPointer::Published, has, [&] {
        *has = HasEarlierVersions(FromHost(path)) ? VARIANT_TRUE : VARIANT_FALSE;
        return S_OK;
    });
}

HRESULT CWin32FileSystemObject::GetRevisions(const OLECHAR* path, std::uint32_t,
                                             IRevisions** revisions)
{
    return AtBoundary(revisionsReporter, NullPointer::Published, revisions, [&] {
        return MakeRevisions(ListEarlierVersions(FromHost(path)), CLSID_Win32FileSystem, revisions);
    });
}

HRESULT CWin32FileSystemObject::ReadHistory(const OLECHAR* path, const OLECHAR* revision,
                                            const HistoryOptions* options, IHistorySink* sink)
{
    return ReadHistoryForHost({CLSID_Win32FileSystem, IID_IFileSystemHistory}, nullptr, path,
                              revision, options, sink, ReadLocalHistory);
}

HRESULT CWin32FileSystemObject::OpenTree(const OLECHAR* path, const OLECHAR* revision,
                                         ICopyProgress* progress, ITree** tree)
{
    return OpenTreeForHost({CLSID_Win32FileSystem, IID_IFileSystemTrees}, nullptr, path, revision,
                           progress, tree, OpenLocalTree);
}

HRESULT CWin32FileSystemObject::CopyItem(const OLECHAR* source, const OLECHAR* destination,
                                         ICopyProgress* progress)
{
    return Copy(systemReporter, {source, destination, 0, progress});
}

HRESULT CWin32FileSystemObject::CopyItemEx(const OLECHAR* source, const OLECHAR* destination,
                                           std::uint32_t flags, ICopyProgress* progress)
{
    return Copy({CLSID_Win32FileSystem, IID_IFileSystemCopyEx},
                {source, destination, flags, progress});
}

HRESULT CWin32FileSystemObject::Copy(const Reporter& reporter, const CopyRequest& request)
{
    return AtBoundary(reporter, [&] {
        const std::u16string source = FromHost(request.source);
        const std::u16string destination = FromHost(request.destination);
        const HRESULT status =
            CopyByPath(*this, source, destination, request.flags, request.progress);
        if (SUCCEEDED(status))
            return status;
        // This replaces a more exact text that may have been published on the way.
        return PublishFailure(reporter, MessageId::CopyFailed, status, {source, destination});
    });
}

HRESULT CWin32FileSystemObject::CreateTempFile(const OLECHAR* path, BSTR* tempPath)
{
    return AtBoundary(systemReporter, NullPointer::Published, tempPath, [&] {
        const std::u16string beside = FromHost(path);
        std::u16string made;
        const HRESULT status = CreateFileBeside(beside, made);
        if (SUCCEEDED(status))
            return ToHost(made, tempPath);
        return PublishFailure(systemReporter, MessageId::TemporaryFileFailed, status, {beside});
    });
}

HRESULT CWin32FileSystemObject::DeleteItems(IItemList* items, VARIANT_BOOL noConfirm,
                                            VARIANT_BOOL recursive)
{
    if (items == nullptr)
        return RefuseNull(systemReporter, NullPointer::Published);
    return AtBoundary(systemReporter, [&] {
        const std::optional<ShellList> list = ListOf(*items);
        if (!list)
            return S_OK;
        const ShellOutcome outcome = ShellDelete(OwnerWindow(host_.Get()), *list, IsTrue(noConfirm),
                                                 IsTrue(recursive), ToTrash);
        // The user who said no has got what they wanted.
        if (outcome.error == 0 || outcome.aborted)
            return S_OK;
        return PublishFailure(systemReporter, MessageId::DeleteListFailed, E_FAIL);
    });
}

} // namespace tarnwell
