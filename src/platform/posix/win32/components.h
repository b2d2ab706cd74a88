// Components, and critical sections.
#pragma once

#include "platform/posix/win32/files.h"

#include <pthread.h>

extern "C"
{
    HRESULT CoFileTimeNow(FILETIME* now);
    // There is no component registry: REGDB_E_CLASSNOTREG always, `*progId` null.
    HRESULT ProgIDFromCLSID(REFCLSID clsid, LPOLESTR* progId);
    void CoTaskMemFree(void* memory);
}

struct CRITICAL_SECTION
{
    pthread_mutex_t mutex;
};

extern "C"
{
    // `spinCount` and `flags` are ignored. The section is recursive.
    BOOL InitializeCriticalSectionEx(CRITICAL_SECTION* section, DWORD spinCount, DWORD flags);
    void EnterCriticalSection(CRITICAL_SECTION* section);
    void LeaveCriticalSection(CRITICAL_SECTION* section);
    void DeleteCriticalSection(CRITICAL_SECTION* section);
}
