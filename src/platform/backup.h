// The platform's way to walk over the streams of a file without special rights.
#pragma once

#include "platform/win32.h"

namespace tarnwell
{

// Named after the platform's calls, whose contracts they have: `read` gives a header for each
// stream, then its name, then its bytes; `seek` jumps over bytes. Both keep their place in
// `*context`, which a `read` with `abort` set frees.
struct BackupCalls
{
    BOOL(CALLBACK* read)
    (HANDLE file, BYTE* buffer, DWORD size, DWORD* read, BOOL abort, BOOL security,
     LPVOID* context);
    BOOL(CALLBACK* seek)
    (HANDLE file, DWORD low, DWORD high, DWORD* lowSought, DWORD* highSought, LPVOID* context);
};

// Null on platforms where files have no named streams. Not constant, so that a test can have
// streams where there are none.
extern const BackupCalls* backupCalls;

} // namespace tarnwell
