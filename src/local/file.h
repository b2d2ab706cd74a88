// The file item of the local file system.
#pragma once

#include "local/item.h"

#include <tarnwell/classes.h>

namespace tarnwell
{

class CWin32FileObject : public LocalItem,
                         public IFileSystemItemIcon,
                         public IFileSystemItemExt,
                         public IFile,
                         public ErrorInfoFor<IFileSystemItem, IFileSystemItemIcon, IFile>
{
public:
    // Deliberately unlike the bases and the error-info list: the icon is there and not reachable,
    // the settable time is reachable and claims no error info.
    using Interfaces =
        InterfaceList<IFileSystemItem, IFileSystemItemExt, IFile, ::ISupportErrorInfo>;

    CWin32FileObject() : LocalItem(CLSID_Win32File) {}

    HRESULT STDMETHODCALLTYPE GetIcon(std::uint32_t reserved, std::int32_t* iconIndex,
                                      void** imageList) override;
    HRESULT STDMETHODCALLTYPE SetModifiedTime(std::uint64_t fileTime) override;
    HRESULT STDMETHODCALLTYPE GetSizeLow(std::uint32_t* size) override;
    HRESULT STDMETHODCALLTYPE GetSizeHigh(std::uint32_t* size) override;
    HRESULT STDMETHODCALLTYPE Open(std::uint32_t access, std::uint32_t disposition,
                                   IFileStream** stream) override;

protected:
    ~CWin32FileObject() = default;
};

} // namespace tarnwell
