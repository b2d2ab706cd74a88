#include "platform/endless.h"

#include "platform/posix/files/nativepath.h"

#include <sys/stat.h>

extern "C" BOOL IsEndless(LPCWSTR path)
{
    const auto native = tarnwell::posix::NativePath(path);
    struct stat entry;
    return native && stat(native->c_str(), &entry) == 0 && !S_ISREG(entry.st_mode) &&
           !S_ISDIR(entry.st_mode);
}
