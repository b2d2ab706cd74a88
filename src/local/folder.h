// The folder item of the local file system.
#pragma once

#include "local/item.h"
#include "local/recordlist.h"

#include <tarnwell/classes.h>

namespace tarnwell
{

class CWin32FolderObject : public LocalItem,
                           public IFolder,
                           public ErrorInfoFor<IFileSystemItem, IFolder>
{
public:
    using Interfaces = InterfaceList<IFileSystemItem, IFolder, ::ISupportErrorInfo>;

    CWin32FolderObject() : LocalItem(CLSID_Win32Folder) {}

    HRESULT STDMETHODCALLTYPE GetContents(IFolderContents** contents) override;
    HRESULT STDMETHODCALLTYPE Create(VARIANT_BOOL recursive) override;

    // Appends the folder's entries to `records` in the platform's order, each file's named data
    // streams behind it if the host wants them.
    HRESULT ReadContents(RecordList& records) const;

protected:
    ~CWin32FolderObject() = default;
};

} // namespace tarnwell
