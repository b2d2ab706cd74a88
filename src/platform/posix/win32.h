// The platform operations, for Linux. Each does what its namesake on Windows does for the flags
// and arguments in use here; what is not supported fails with ERROR_NOT_SUPPORTED or
// ERROR_INVALID_PARAMETER. A failing call sets the calling thread's last error, never to 0.
#pragma once

#include "platform/posix/win32/calendar.h"
#include "platform/posix/win32/components.h"
#include "platform/posix/win32/control.h"
#include "platform/posix/win32/copy.h"
#include "platform/posix/win32/dialogs.h"
#include "platform/posix/win32/errors.h"
#include "platform/posix/win32/files.h"
#include "platform/posix/win32/internet.h"
#include "platform/posix/win32/multibyte.h"
#include "platform/posix/win32/processes.h"
#include "platform/posix/win32/registry.h"
#include "platform/posix/win32/shell.h"
#include "platform/posix/win32/types.h"
