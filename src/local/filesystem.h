// The local file system.
#pragma once

#include "frame/comobject.h"
#include "frame/publish.h"

#include <tarnwell/classes.h>
#include <tarnwell/filesystem.h>
#include <tarnwell/history.h>
#include <tarnwell/trees.h>

namespace tarnwell
{

class CWin32FileSystemObject
    : public IFileSystemInit,
      public IFileSystem,
      public IFileSystemCopyEx,
      public IFileSystemRevisions,
      public IFileSystemHistory,
      public IFileSystemTrees,
      public ErrorInfoFor<IFileSystem, IFileSystemInit, IFileSystemCopyEx, IFileSystemRevisions,
                          IFileSystemHistory, IFileSystemTrees>
{
public:
    using Interfaces =
        InterfaceList<IFileSystemInit, IFileSystem, IFileSystemCopyEx, IFileSystemRevisions,
                      IFileSystemHistory, IFileSystemTrees, ::ISupportErrorInfo>;

    HRESULT STDMETHODCALLTYPE SetHost(::IUnknown* host) override;

    HRESULT STDMETHODCALLTYPE GetFolder(const OLECHAR* path, VARIANT_BOOL mustExist,
                                        IFolder** folder) override;
    HRESULT STDMETHODCALLTYPE GetFile(const OLECHAR* path, VARIANT_BOOL mustExist,
                                      IFile** file) override;
    HRESULT STDMETHODCALLTYPE CopyItem(const OLECHAR* source, const OLECHAR* destination,
                                       ICopyProgress* progress) override;
    HRESULT STDMETHODCALLTYPE CreateTempFile(const OLECHAR* path, BSTR* tempPath) override;
    HRESULT STDMETHODCALLTYPE DeleteItems(IItemList* items, VARIANT_BOOL noConfirm,
                                          VARIANT_BOOL recursive) override;
    HRESULT STDMETHODCALLTYPE GetOperationMask(std::uint32_t kind, ::IUnknown* other,
                                               std::uint32_t* mask) override;
    HRESULT STDMETHODCALLTYPE CombinePath(const OLECHAR* base, const OLECHAR* relative,
                                          BSTR* result) override;

    HRESULT STDMETHODCALLTYPE CopyItemEx(const OLECHAR* source, const OLECHAR* destination,
                                         std::uint32_t flags, ICopyProgress* progress) override;

    HRESULT STDMETHODCALLTYPE HasRevisions(const OLECHAR* path, std::uint32_t reserved,
                                           VARIANT_BOOL* has) override;
    HRESULT STDMETHODCALLTYPE GetRevisions(const OLECHAR* path, std::uint32_t reserved,
                                           IRevisions** revisions) override;

    HRESULT STDMETHODCALLTYPE ReadHistory(const OLECHAR* path, const OLECHAR* revision,
                                          const HistoryOptions* options,
                                          IHistorySink* sink) override;
    HRESULT STDMETHODCALLTYPE OpenTree(const OLECHAR* path, const OLECHAR* revision,
                                       ICopyProgress* progress, ITree** tree) override;

protected:
    ~CWin32FileSystemObject() = default;

private:
    struct CopyRequest
    {
        const OLECHAR* source;
        const OLECHAR* destination;
        std::uint32_t flags;
        ICopyProgress* progress;
    };

    HRESULT Copy(const Reporter& reporter, const CopyRequest& request);

    ComPtr<IHostWindow> host_;
};

} // namespace tarnwell
