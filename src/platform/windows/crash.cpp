#include "platform/crash.h"

namespace tarnwell
{

std::optional<std::u16string> CrashOf(HANDLE process)
{
    // From here on an exit code is the exception that nobody handled.
    constexpr DWORD firstException = 0xC0000000;
    DWORD code = 0;
    if (!GetExitCodeProcess(process, &code) || code < firstException)
        return std::nullopt;
    return std::u16string();
}

} // namespace tarnwell
