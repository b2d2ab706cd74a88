#include "local/folder.h"

#include "frame/boundary.h"
#include "frame/text.h"
#include "local/createpath.h"
#include "local/foldercontents.h"

namespace tarnwell
{

namespace
{

constexpr Reporter folderReporter{CLSID_Win32Folder, IID_IFolder};

HRESULT MakeContents(const LocalFacts& facts, RecordList records, IFolderContents** out)
{
    ComPtr<ComObject<CWin32FolderContentsObject>> contents;
    HRESULT status = MakeObject<CWin32FolderContentsObject>(contents);
    if (SUCCEEDED(status))
    {
        contents->Initialize(facts.Path(), std::move(records), facts.host);
        status = contents->QueryInterface(IID_IFolderContents, reinterpret_cast<void**>(out));
    }
    if (FAILED(status))
        return PublishFailure(folderReporter, MessageId::SupportObjectFailed, status);
    return S_OK;
}

HRESULT CreateOne(const std::u16string& path)
{
    if (CreateDirectoryW(Wide(path), nullptr))
        return S_OK;
    const HRESULT status = StatusFromLastError();
    return PublishFailure(folderReporter, MessageId::FolderCreationFailed, status, {path});
}

} // namespace

HRESULT CWin32FolderObject::GetContents(IFolderContents** contents)
{
    return AtBoundary(folderReporter, NullPointer::Bare, contents, [&] {
        RecordList records;
        const HRESULT status = ReadContents(records);
        if (FAILED(status))
            return status;
        return MakeContents(facts_, std::move(records), contents);
    });
}

HRESULT CWin32FolderObject::Create(VARIANT_BOOL recursive)
{
    return AtBoundary(folderReporter, [&] {
        return IsTrue(recursive) ? CreateFolderPath(facts_.Path(), folderReporter)
                                 : CreateOne(facts_.Path());
    });
}

} // namespace tarnwell
