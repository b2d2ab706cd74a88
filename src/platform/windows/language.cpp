#include "platform/language.h"

namespace tarnwell
{

LANGID WantedLanguage()
{
    const HMODULE kernel = GetModuleHandleW(L"kernel32.dll");
    const FARPROC found =
        kernel == nullptr ? nullptr : GetProcAddress(kernel, "GetUserDefaultUILanguage");
    if (found == nullptr)
        return GetUserDefaultLangID();
    return reinterpret_cast<LANGID(WINAPI*)()>(reinterpret_cast<void*>(found))();
}

} // namespace tarnwell
