#include "support/wine.h"

#include <windows.h>

namespace tarnwell::test
{

bool IsUnderWine()
{
    const HMODULE library = GetModuleHandleW(L"ntdll.dll");
    return library != nullptr && GetProcAddress(library, "wine_get_version") != nullptr;
}

} // namespace tarnwell::test
