#include "platform/posix/errors/errnotable.h"
#include "platform/posix/errors/lasterror.h"

using namespace tarnwell::posix;

extern "C" BOOL InitializeCriticalSectionEx(CRITICAL_SECTION* section, DWORD, DWORD)
{
    pthread_mutexattr_t attributes;
    if (const int number = pthread_mutexattr_init(&attributes); number != 0)
        return Fail(ErrorFromErrno(number));
    pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE);
    const int number = pthread_mutex_init(&section->mutex, &attributes);
    pthread_mutexattr_destroy(&attributes);
    return number == 0 ? 1 : Fail(ErrorFromErrno(number));
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
