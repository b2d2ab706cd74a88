#include "module/lifecycle.h"
#include "platform/win32.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID)
{
    if (reason == DLL_PROCESS_ATTACH)
    {
        tarnwell::StartModule();
        DisableThreadLibraryCalls(module);
    }
    else if (reason == DLL_PROCESS_DETACH)
    {
        tarnwell::StopModule();
    }
    return TRUE;
}
