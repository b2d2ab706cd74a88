// Copying files.
#pragma once

#include "platform/posix/win32/files.h"

// Called with the file's size, how much of it is done, the same two for its one stream, the
// stream's number, the reason, the open files, and what the caller gave along.
using LPPROGRESS_ROUTINE = DWORD (*)(LARGE_INTEGER size, LARGE_INTEGER done,
                                     LARGE_INTEGER streamSize, LARGE_INTEGER streamDone,
                                     DWORD stream, DWORD reason, HANDLE source, HANDLE target,
                                     LPVOID data);

inline constexpr DWORD CALLBACK_CHUNK_FINISHED = 0;
inline constexpr DWORD CALLBACK_STREAM_SWITCH = 1;
inline constexpr DWORD PROGRESS_CONTINUE = 0;
inline constexpr DWORD PROGRESS_CANCEL = 1;

inline constexpr DWORD COPY_FILE_FAIL_IF_EXISTS = 0x1;
inline constexpr DWORD COPY_FILE_RESTARTABLE = 0x2;
inline constexpr DWORD COPY_FILE_OPEN_SOURCE_FOR_WRITE = 0x4;
inline constexpr DWORD COPY_FILE_ALLOW_DECRYPTED_DESTINATION = 0x8;
inline constexpr DWORD COPY_FILE_COPY_SYMLINK = 0x800;
inline constexpr DWORD COPY_FILE_NO_BUFFERING = 0x1000;

extern "C"
{
    // Regular files only, into a new file or over the bytes of an existing one; links are followed
    // at both ends, but for a source link that COPY_FILE_COPY_SYMLINK copies as such. The other
    // COPY_FILE_ flags above mean nothing here, further ones are ERROR_INVALID_PARAMETER. `cancel`
    // must be null.
    //
    // `progress`, which may be null, is called before anything is changed in an existing target and
    // then after each piece of 4 MiB; any answer but PROGRESS_CONTINUE is ERROR_REQUEST_ABORTED. A
    // copy that fails or is cancelled leaves no target behind, once its bytes were begun with.
    //
    // The target gets the source's bytes, permission bits and write time, the latter two as far as
    // its file system and owner allow; nothing else. A source that shrinks meanwhile ends there.
    //
    // A folder at either end, and a target that nobody may write, is ERROR_ACCESS_DENIED; one file
    // at both ends, however it is named, ERROR_SHARING_VIOLATION; pipes, devices and sockets are
    // ERROR_NOT_SUPPORTED.
    BOOL CopyFileExW(LPCWSTR source, LPCWSTR target, LPPROGRESS_ROUTINE progress, LPVOID data,
                     BOOL* cancel, DWORD flags);
    // The same without questions and flags.
    BOOL CopyFileW(LPCWSTR source, LPCWSTR target, BOOL failIfExists);
}
