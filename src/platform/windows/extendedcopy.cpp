#include "platform/extendedcopy.h"

extern "C" tarnwell::ExtendedCopy FindExtendedCopy(HMODULE* library)
{
    *library = LoadLibraryW(L"kernel32.dll");
    const FARPROC found = *library == nullptr ? nullptr : GetProcAddress(*library, "CopyFileExW");
    return reinterpret_cast<tarnwell::ExtendedCopy>(reinterpret_cast<void*>(found));
}

extern "C" void ReleaseExtendedCopy(HMODULE library)
{
    if (library != nullptr)
        FreeLibrary(library);
}
