// The platform operations that the logic may use, under the names they have on Windows.
//
// There they are the system's own and nothing stands between. Elsewhere posix/win32.h declares
// just these, and the files beside it implement them.
#pragma once

#include <tarnwell/com.h>

#ifdef _WIN32
#include <process.h>
#include <shellapi.h>
#include <wininet.h>
#include <winternl.h>
#else
#include "platform/posix/win32.h"
#endif
