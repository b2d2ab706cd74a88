// Files opened the short way. For tests of the module's inside.
#pragma once

#include "frame/handle.h"
#include "platform/wide.h"
#include "support/tempfolder.h"

namespace tarnwell::test
{

inline constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

inline OsHandle Opened(const std::u16string& path, DWORD access, DWORD disposition,
                       DWORD flags = FILE_ATTRIBUTE_NORMAL)
{
    return OsHandle(
        CreateFileW(Wide(path), access, shareAll, nullptr, disposition, flags, nullptr));
}

inline OsHandle OpenedForReading(const std::u16string& path)
{
    return Opened(path, GENERIC_READ, OPEN_EXISTING);
}

// A file with these bytes, made in `folder`.
inline OsHandle OpenedWith(const TempFolder& folder, std::string_view bytes)
{
    const std::u16string path = folder / u"opened";
    WriteBytes(path, bytes);
    return OpenedForReading(path);
}

// The error of an opening that must fail; ERROR_SUCCESS if it doesn't.
inline DWORD ErrorOfOpening(const std::u16string& path, DWORD access, DWORD disposition,
                            DWORD flags = FILE_ATTRIBUTE_NORMAL)
{
    return Opened(path, access, disposition, flags) ? ERROR_SUCCESS : GetLastError();
}

// The error of a call that answered `result`.
inline DWORD ErrorOf(BOOL result)
{
    return result ? ERROR_SUCCESS : GetLastError();
}

} // namespace tarnwell::test
