#include "platform/endless.h"

// Some names are devices in each folder.
extern "C" BOOL IsEndless(LPCWSTR path)
{
    const HANDLE entry =
        CreateFileW(path, 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (entry == INVALID_HANDLE_VALUE)
        return 0;
    const DWORD type = GetFileType(entry);
    CloseHandle(entry);
    return type == FILE_TYPE_CHAR || type == FILE_TYPE_PIPE;
}
