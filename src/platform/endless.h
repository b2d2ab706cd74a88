// What is no file, though it stands among files.
#pragma once

#include "platform/win32.h"

extern "C"
{
    // Whether reading what is there, links followed, may never end: a pipe, a socket or a device.
    // Never waits, and is noticed by nobody. False also where nothing is known of it.
    BOOL IsEndless(LPCWSTR path);
}
