// The system's call that sends a control code to a file system. Programs can't link to it: it is
// looked up.
#pragma once

#include "platform/win32.h"

namespace tarnwell
{

using NtFsControlFileCall = NTSTATUS(NTAPI*)(HANDLE file, HANDLE event, PIO_APC_ROUTINE routine,
                                             void* context, IO_STATUS_BLOCK* status, ULONG code,
                                             void* input, ULONG inputSize, void* output,
                                             ULONG outputSize);

// Set before the module is at work, and null where the system has no such call.
extern NtFsControlFileCall ntFsControlFile;

} // namespace tarnwell
