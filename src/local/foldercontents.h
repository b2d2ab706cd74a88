// The contents of a local folder: a list of find records, and items made from them on demand.
#pragma once

#include "frame/comobject.h"
#include "local/item.h"
#include "local/recordlist.h"

#include <tarnwell/host.h>
#include <tarnwell/items.h>

#include <string>

namespace tarnwell
{

class CWin32FolderContentsObject : public IFolderContents, public ErrorInfoFor<IFolderContents>
{
public:
    using Interfaces = InterfaceList<IFolderContents, ::ISupportErrorInfo>;

    HRESULT STDMETHODCALLTYPE GetCount(std::uint32_t* count) override;
    HRESULT STDMETHODCALLTYPE GetItem(std::int32_t index, IFileSystemItem** item) override;

    // Called once, before the object is handed out. `path` is the folder's, as its item holds it.
    void Initialize(const std::u16string& path, RecordList records,
                    const ComPtr<IHostWindow>& host);

protected:
    ~CWin32FolderContentsObject() = default;

private:
    HRESULT MakeItem(std::size_t index, IFileSystemItem** item) const;

    std::u16string path_;
    PathPrefix prefix_;
    RecordList records_;
    ComPtr<IHostWindow> host_;
};

} // namespace tarnwell
