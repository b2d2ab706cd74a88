#include "local/lookup.h"

#include "frame/handle.h"
#include "frame/paths.h"
#include "frame/status.h"
#include "local/datastreams.h"
#include "local/findrecord.h"
#include "local/makeitem.h"

#include <tarnwell/classes.h>
#include <tarnwell/filesystem.h>

#include <algorithm>
#include <optional>
#include <vector>

namespace tarnwell
{

namespace
{

constexpr HRESULT notFound = StatusFromError(ERROR_FILE_NOT_FOUND);

void ReadSize(HANDLE file, WIN32_FIND_DATAW& record)
{
    LONG high = 0;
    const DWORD low = SetFilePointer(file, 0, &high, FILE_END);
    if (low == INVALID_SET_FILE_POINTER && GetLastError() != ERROR_SUCCESS)
        return;
    record.nFileSizeLow = low;
    record.nFileSizeHigh = static_cast<DWORD>(high);
}

// Whether there is anything at `path`; if not, the last error tells why. What exists and can't be
// opened has its attributes, and size and times of 0.
bool ReadPathInfo(const std::u16string& path, WIN32_FIND_DATAW& record)
{
    record = {};
    SetNames(record, LeafNameOf(path));
    const DWORD attributes = GetFileAttributesW(Wide(path));
    record.dwFileAttributes = attributes;
    if (attributes == INVALID_FILE_ATTRIBUTES)
        return false;
    const OsHandle file(CreateFileW(Wide(path), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                    nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    if (!file)
        return true;
    ReadSize(file.Get(), record);
    GetFileTime(file.Get(), &record.ftCreationTime, &record.ftLastAccessTime,
                &record.ftLastWriteTime);
    return true;
}

// An item yet to be created: no attributes, no name, the present time.
WIN32_FIND_DATAW RecordOfMissing()
{
    WIN32_FIND_DATAW record{};
    FILETIME now{};
    CoFileTimeNow(&now);
    record.ftCreationTime = now;
    record.ftLastAccessTime = now;
    record.ftLastWriteTime = now;
    return record;
}

std::u16string_view FolderOfLeaf(const std::u16string& path)
{
    return DropLastSeparator(std::u16string_view(path).substr(0, FindLeafOffset(path)));
}

char16_t FoldAscii(char16_t unit)
{
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + (u'a' - u'A')) : unit;
}

bool EqualIgnoringAsciiCase(std::u16string_view left, std::u16string_view right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char16_t a, char16_t b) { return FoldAscii(a) == FoldAscii(b); });
}

// Turns the record of a file into that of its stream `name` ("file:stream"). A stream that doesn't
// exist has no size. False if it doesn't exist and must.
bool NarrowToStream(const std::u16string& file, std::u16string_view name, bool mustExist,
                    WIN32_FIND_DATAW& record)
{
    // A file that can't be opened has no streams. What was published about that stays.
    std::vector<WIN32_FIND_DATAW> streams;
    EnumerateDataStreams(file, record, streams, {CLSID_Win32FileSystem, IID_IFileSystem});
    const auto found =
        std::find_if(streams.begin(), streams.end(), [&](const WIN32_FIND_DATAW& stream) {
            return EqualIgnoringAsciiCase(NameOf(stream), name);
        });
    if (found != streams.end())
    {
        record = *found;
        return true;
    }
    record.nFileSizeLow = 0;
    record.nFileSizeHigh = 0;
    SetNames(record, name);
    return !mustExist;
}

// What both lookups do.
HRESULT OpenItem(const std::u16string& path, bool mustExist, bool wantFolder,
                 const ComPtr<IHostWindow>& host, REFIID iid, void** out)
{
    const auto make = wantFolder ? MakeFolderItem : MakeFileItem;
    const std::optional<StreamPath> split = SplitStreamPath(path);
    const std::u16string base = split ? std::u16string(split->file) : path;

    WIN32_FIND_DATAW record{};
    if (!ReadPathInfo(base, record))
    {
        const HRESULT status = EnsureFailed(StatusFromLastError());
        return mustExist ? status : make(path, ItemRecordOf(RecordOfMissing()), host, iid, out);
    }
    if (IsFolder(record) != wantFolder)
        return notFound;
    if (!wantFolder && split && !NarrowToStream(base, LeafNameOf(path), mustExist, record))
        return notFound;
    return make(FolderOfLeaf(path), ItemRecordOf(record), host, iid, out);
}

} // namespace

HRESULT OpenFolderItem(const std::u16string& path, bool mustExist, const ComPtr<IHostWindow>& host,
                       IFolder** out)
{
    return OpenItem(path, mustExist, true, host, IID_IFolder, reinterpret_cast<void**>(out));
}

HRESULT OpenFileItem(const std::u16string& path, bool mustExist, const ComPtr<IHostWindow>& host,
                     IFile** out)
{
    return OpenItem(path, mustExist, false, host, IID_IFile, reinterpret_cast<void**>(out));
}

} // namespace tarnwell
