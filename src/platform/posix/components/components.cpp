#include "platform/posix/calendar/filetime.h"

#include <cstdlib>

extern "C" HRESULT CoFileTimeNow(FILETIME* now)
{
    if (now == nullptr)
        return E_INVALIDARG;
    timespec time;
    clock_gettime(CLOCK_REALTIME, &time);
    *now = tarnwell::posix::FileTimeOf(time.tv_sec, static_cast<std::uint32_t>(time.tv_nsec));
    return S_OK;
}

extern "C" HRESULT ProgIDFromCLSID(REFCLSID, LPOLESTR* progId)
{
    if (progId == nullptr)
        return E_INVALIDARG;
    *progId = nullptr;
    return REGDB_E_CLASSNOTREG;
}

extern "C" void CoTaskMemFree(void* memory)
{
    std::free(memory);
}
