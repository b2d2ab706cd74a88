// The platform's copy that tells its progress, which not every version of the platform has.
#pragma once

#include "platform/win32.h"

namespace tarnwell
{

using ExtendedCopy = decltype(&::CopyFileExW);

} // namespace tarnwell

extern "C"
{
    // Looks for it by its name. Null, with the last error set, if there is none. `*library` goes to
    // ReleaseExtendedCopy when the copy is no longer called; it is null if there is nothing to
    // release.
    tarnwell::ExtendedCopy FindExtendedCopy(HMODULE* library);
    void ReleaseExtendedCopy(HMODULE library);
}
