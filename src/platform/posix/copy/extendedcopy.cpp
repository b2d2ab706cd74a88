#include "platform/extendedcopy.h"

// Always there.
extern "C" tarnwell::ExtendedCopy FindExtendedCopy(HMODULE* library)
{
    *library = nullptr;
    return &CopyFileExW;
}

extern "C" void ReleaseExtendedCopy(HMODULE) {}
