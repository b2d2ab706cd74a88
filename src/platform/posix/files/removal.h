// Taking away a file, and no other that somebody has put in its place.
#pragma once

#include "platform/win32.h"

#include <sys/stat.h>

namespace tarnwell::posix
{

// Removes the entry at `path` if it is the one of these facts. ERROR_SUCCESS, or
// ERROR_SHARING_VIOLATION if it isn't, or why it can't be removed. No memory is asked for.
DWORD RemoveIfSame(const char* path, const struct stat& wanted);

inline bool IsSame(const struct stat& one, const struct stat& other)
{
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

} // namespace tarnwell::posix
