#include "local/foldercontents.h"

#include "frame/boundary.h"
#include "frame/text.h"
#include "local/makeitem.h"

#include <tarnwell/classes.h>

namespace tarnwell
{

namespace
{
constexpr Reporter contentsReporter{CLSID_Win32FolderContents, IID_IFolderContents};
}

void CWin32FolderContentsObject::Initialize(const std::u16string& path, RecordList records,
                                            const ComPtr<IHostWindow>& host)
{
    path_ = path;
    prefix_ = PrefixIn(path);
    records_ = std::move(records);
    host_ = host;
}

HRESULT CWin32FolderContentsObject::GetCount(std::uint32_t* count)
{
    return AtBoundary(contentsReporter, NullPointer::Published, count, [&] {
        *count = static_cast<std::uint32_t>(records_.Size());
        return S_OK;
    });
}

HRESULT CWin32FolderContentsObject::GetItem(std::int32_t index, IFileSystemItem** item)
{
    return AtBoundary(contentsReporter, NullPointer::Published, item, [&] {
        if (index < 0 || static_cast<std::size_t>(index) >= records_.Size())
        {
            return PublishMessage(contentsReporter, MessageId::InvalidContentsIndex, E_INVALIDARG);
        }
        return MakeItem(static_cast<std::size_t>(index), item);
    });
}

HRESULT CWin32FolderContentsObject::MakeItem(std::size_t index, IFileSystemItem** item) const
{
    const HRESULT status = MakeItemIn(prefix_, records_.At(index), host_, item);
    if (SUCCEEDED(status))
        return S_OK;
    return PublishFailure(contentsReporter, MessageId::ContentsItemFailed, status,
                          {Decimal(index), path_});
}

} // namespace tarnwell
