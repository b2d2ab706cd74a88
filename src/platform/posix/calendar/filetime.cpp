#include "platform/posix/calendar/filetime.h"

#include "platform/posix/errors/lasterror.h"
#include "platform/posix/files/filehandle.h"

#include <fcntl.h>

namespace tarnwell::posix
{
namespace
{

// What utimensat takes; a null time and a time of 0 leave things as they are.
timespec TimespecOf(const FILETIME* time)
{
    if (time == nullptr || TimeOf(*time) == 0)
        return {0, UTIME_OMIT};
    const std::int64_t ticks = static_cast<std::int64_t>(TimeOf(*time));
    return {ticks / ticksPerSecond - epochDistance, ticks % ticksPerSecond * nanosecondsPerTick};
}

bool IsValid(const FILETIME* time)
{
    return time == nullptr || TimeOf(*time) <= lastTicks;
}

} // namespace
} // namespace tarnwell::posix

using namespace tarnwell::posix;

extern "C" BOOL GetFileTime(HANDLE file, FILETIME* creation, FILETIME* access, FILETIME* write)
{
    const int descriptor = DescriptorOf(file);
    struct statx entry;
    if (statx(descriptor, "", AT_EMPTY_PATH, STATX_ATIME | STATX_MTIME | STATX_BTIME, &entry) != 0)
        return FailOnDescriptor(descriptor);
    if (creation != nullptr)
        *creation = CreationTimeOf(entry);
    if (access != nullptr)
        *access = FileTimeOf(entry.stx_atime);
    if (write != nullptr)
        *write = FileTimeOf(entry.stx_mtime);
    return 1;
}

extern "C" BOOL SetFileTime(HANDLE file, const FILETIME* creation, const FILETIME* access,
                            const FILETIME* write)
{
    // No file system here can set it.
    if (creation != nullptr)
        return Fail(ERROR_NOT_SUPPORTED);
    if (!IsValid(access) || !IsValid(write))
        return Fail(ERROR_INVALID_PARAMETER);
    const int descriptor = DescriptorOf(file);
    const timespec times[] = {TimespecOf(access), TimespecOf(write)};
    // Not futimens: that refuses a file that is open for its times only.
    const bool done = utimensat(descriptor, "", times, AT_EMPTY_PATH) == 0;
    return done ? 1 : FailOnDescriptor(descriptor);
}
