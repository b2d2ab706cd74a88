#include "platform/windows/systemcall.h"

namespace tarnwell
{

FARPROC FindSystemCall(LPCWSTR library, const char* name)
{
    const HMODULE module = LoadLibraryW(library);
    return module == nullptr ? nullptr : GetProcAddress(module, name);
}

} // namespace tarnwell
