#include "system.h"

#include <windows.h>

#include <objbase.h>

#include <cstdlib>

namespace tarnwell::host
{

namespace
{

UINT outputBefore = 0;

void RestoreConsole()
{
    SetConsoleOutputCP(outputBefore);
}

} // namespace

// The language of the module's texts follows the user's display language; there is no choice.
void PrepareProcess(std::u16string_view)
{
    // The shell, which deletes for the module, wants a thread of this kind.
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE);
    outputBefore = GetConsoleOutputCP();
    if (outputBefore != 0 && SetConsoleOutputCP(CP_UTF8))
        std::atexit(RestoreConsole);
}

} // namespace tarnwell::host
