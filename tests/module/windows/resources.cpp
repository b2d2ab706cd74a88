#include "module/resources.h"

#include <windows.h>

#include <psapi.h>

namespace tarnwell::test
{

std::size_t OpenHandleCount()
{
    DWORD count = 0;
    GetProcessHandleCount(GetCurrentProcess(), &count);
    return count;
}

std::size_t MemoryInUse()
{
    PROCESS_MEMORY_COUNTERS counters{};
    GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    return counters.PagefileUsage;
}

} // namespace tarnwell::test
