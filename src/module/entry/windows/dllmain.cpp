#include "module/lifecycle.h"
#include "platform/win32.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID processEnds)
{
    if (reason == DLL_PROCESS_ATTACH)
    {
        tarnwell::StartModule();
        DisableThreadLibraryCalls(module);
    }
    else if (reason == DLL_PROCESS_DETACH)
    {
        tarnwell::StopModule(processEnds == nullptr ? tarnwell::Ending::OfModule
                                                    : tarnwell::Ending::OfProcess);
    }
    return TRUE;
}
