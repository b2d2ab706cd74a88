#include "platform/printtarget.h"

extern "C" BOOL MakePrintTarget(LPWSTR path)
{
    WCHAR folder[MAX_PATH] = {};
    const DWORD length = GetTempPathW(MAX_PATH, folder);
    const bool fits = length > 0 && length < MAX_PATH;
    return GetTempFileNameW(fits ? folder : L".", L"vrl", 0, path) != 0;
}

extern "C" HANDLE OpenPrintTarget(LPCWSTR path)
{
    SetFileAttributesW(path, FILE_ATTRIBUTE_NORMAL);
    return CreateFileW(path, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                       FILE_ATTRIBUTE_NORMAL | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
}

extern "C" BOOL RemovePrintTarget(LPCWSTR path)
{
    SetFileAttributesW(path, FILE_ATTRIBUTE_NORMAL);
    return DeleteFileW(path);
}
