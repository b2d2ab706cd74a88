#include "platform/win32.h"

// Every object of the module has one, so that making it has to be cheap.
extern "C" BOOL InitializeCriticalSectionEx(CRITICAL_SECTION* section, DWORD, DWORD)
{
    static constexpr pthread_mutex_t recursive = PTHREAD_RECURSIVE_MUTEX_INITIALIZER_NP;
    section->mutex = recursive;
    return 1;
}

extern "C" void EnterCriticalSection(CRITICAL_SECTION* section)
{
    pthread_mutex_lock(&section->mutex);
}

extern "C" void LeaveCriticalSection(CRITICAL_SECTION* section)
{
    pthread_mutex_unlock(&section->mutex);
}

extern "C" void DeleteCriticalSection(CRITICAL_SECTION* section)
{
    pthread_mutex_destroy(&section->mutex);
}
