#include "frame/boundary.h"
#include "frame/handle.h"
#include "frame/hostuser.h"
#include "frame/paths.h"
#include "frame/text.h"
#include "local/datastreams.h"
#include "local/findrecord.h"
#include "local/folder.h"

namespace tarnwell
{

namespace
{

// The two codes by which the platform says that there is nothing (more) to list.
bool IsEndOfListing(DWORD error)
{
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_NO_MORE_FILES;
}

// To be called right behind the find call that failed.
HRESULT StatusOfListing(const std::u16string& path)
{
    const DWORD error = GetLastError();
    if (IsEndOfListing(error))
        return S_OK;
    return PublishFailure({CLSID_Win32Folder, IID_IFolder}, MessageId::FolderReadFailed,
                          StatusFromError(error), {path});
}

bool IsSelfOrParent(std::u16string_view name)
{
    return name == u"." || name == u"..";
}

// A file that can't be opened has no streams. What was published about that stays.
void AppendDataStreams(const std::u16string& base, const WIN32_FIND_DATAW& record,
                       RecordList& records)
{
    std::vector<WIN32_FIND_DATAW> streams;
    EnumerateDataStreams(base + std::u16string(NameOf(record)), record, streams,
                         {CLSID_Win32Folder, IID_IFolder});
    for (const WIN32_FIND_DATAW& stream : streams)
        records.Append(ItemRecordOf(stream));
}

} // namespace

HRESULT CWin32FolderObject::ReadContents(RecordList& records) const
{
    const std::u16string path = facts_.Path();
    std::u16string base = path;
    AppendSeparator(base);
    const std::u16string pattern = base + u"*";
    WIN32_FIND_DATAW record{};
    const FindHandle find(FindFirstFileW(Wide(pattern), &record));
    if (!find)
        return StatusOfListing(path);

    const bool withStreams = BooleanSetting(facts_.host.Get(), u"IterateStreams");
    do
    {
        const ItemRecord entry = ItemRecordOf(record);
        if (IsSelfOrParent(entry.name))
            continue;
        records.Append(entry);
        if (withStreams && !IsFolder(record))
            AppendDataStreams(base, record, records);
    } while (FindNextFileW(find.Get(), &record));
    return StatusOfListing(path);
}

} // namespace tarnwell
