// Files and folders, and the entries of folders.
#pragma once

#include "platform/posix/win32/types.h"

// Time in 100-nanosecond intervals since 1 January 1601 UTC, in two halves.
struct FILETIME
{
    DWORD dwLowDateTime;
    DWORD dwHighDateTime;
};

union LARGE_INTEGER
{
    struct
    {
        DWORD LowPart;
        LONG HighPart;
    } u;
    LONGLONG QuadPart;
};

// The descriptor must be null. Inheritance says nothing here: no handle is ever inherited, and the
// three standard ones that CreateProcessW is given reach the child whatever stands here.
struct SECURITY_ATTRIBUTES
{
    DWORD nLength;
    void* lpSecurityDescriptor;
    BOOL bInheritHandle;
};

// Never filled or read; only null pointers to it are passed.
struct OVERLAPPED;

inline const HANDLE INVALID_HANDLE_VALUE = reinterpret_cast<HANDLE>(LONG_PTR{-1});
inline constexpr DWORD INVALID_FILE_ATTRIBUTES = 0xFFFFFFFF;
inline constexpr DWORD INVALID_SET_FILE_POINTER = 0xFFFFFFFF;
inline constexpr DWORD MAX_PATH = 260;

inline constexpr DWORD GENERIC_READ = 0x80000000;
inline constexpr DWORD GENERIC_WRITE = 0x40000000;
inline constexpr DWORD FILE_LIST_DIRECTORY = 0x0001;
inline constexpr DWORD FILE_READ_ATTRIBUTES = 0x0080;
inline constexpr DWORD FILE_WRITE_ATTRIBUTES = 0x0100;
inline constexpr DWORD FILE_SHARE_READ = 1;
inline constexpr DWORD FILE_SHARE_WRITE = 2;
inline constexpr DWORD FILE_SHARE_DELETE = 4;
inline constexpr DWORD CREATE_NEW = 1;
inline constexpr DWORD CREATE_ALWAYS = 2;
inline constexpr DWORD OPEN_EXISTING = 3;
inline constexpr DWORD OPEN_ALWAYS = 4;
inline constexpr DWORD TRUNCATE_EXISTING = 5;
inline constexpr DWORD FILE_FLAG_BACKUP_SEMANTICS = 0x02000000;
inline constexpr DWORD FILE_FLAG_DELETE_ON_CLOSE = 0x04000000;

inline constexpr DWORD FILE_ATTRIBUTE_READONLY = 0x1;
inline constexpr DWORD FILE_ATTRIBUTE_HIDDEN = 0x2;
inline constexpr DWORD FILE_ATTRIBUTE_DIRECTORY = 0x10;
inline constexpr DWORD FILE_ATTRIBUTE_NORMAL = 0x80;
inline constexpr DWORD FILE_ATTRIBUTE_TEMPORARY = 0x100;
inline constexpr DWORD FILE_ATTRIBUTE_REPARSE_POINT = 0x400;

inline constexpr DWORD FILE_BEGIN = 0;
inline constexpr DWORD FILE_CURRENT = 1;
inline constexpr DWORD FILE_END = 2;

// One entry of a folder. Names longer than the fields don't occur: a name has at most 255 bytes.
struct WIN32_FIND_DATAW
{
    DWORD dwFileAttributes;
    FILETIME ftCreationTime;
    FILETIME ftLastAccessTime;
    FILETIME ftLastWriteTime;
    DWORD nFileSizeHigh;
    DWORD nFileSizeLow;
    DWORD dwReserved0;
    DWORD dwReserved1;
    WCHAR cFileName[MAX_PATH];
    WCHAR cAlternateFileName[14];
};

extern "C"
{
    // Share modes are accepted and not enforced. A folder opens only with
    // FILE_FLAG_BACKUP_SEMANTICS and without write access; with that flag and OPEN_EXISTING, a
    // link without a target opens as itself, for its times only. Opening never blocks on a
    // pipe or terminal, and never makes a terminal the controlling one. FILE_FLAG_DELETE_ON_CLOSE
    // takes the name away at once and follows no link.
    HANDLE CreateFileW(LPCWSTR path, DWORD access, DWORD share, SECURITY_ATTRIBUTES* security,
                       DWORD disposition, DWORD flags, HANDLE templateFile);
    // Of files, pipes, processes, threads and events. Only those of files and pipes may be closed
    // twice.
    BOOL CloseHandle(HANDLE handle);
    // Both go on to the full size or the end of the file. The end of a pipe is success with 0
    // bytes. Writing to a pipe that nobody reads is ERROR_BROKEN_PIPE, and no signal.
    BOOL ReadFile(HANDLE file, void* buffer, DWORD size, DWORD* read, OVERLAPPED* overlapped);
    BOOL WriteFile(HANDLE file, LPCVOID buffer, DWORD size, DWORD* written, OVERLAPPED* overlapped);
    // `high`, if not null, is the upper half of the distance and receives that of the position.
    // Sets the last error to 0 on success, as 0xFFFFFFFF may be a position.
    DWORD SetFilePointer(HANDLE file, LONG distance, LONG* high, DWORD origin);
    BOOL SetFilePointerEx(HANDLE file, LARGE_INTEGER distance, LARGE_INTEGER* position,
                          DWORD origin);
    BOOL SetEndOfFile(HANDLE file);
    // The creation time is the birth time where the file system keeps one, else the write time.
    BOOL GetFileTime(HANDLE file, FILETIME* creation, FILETIME* access, FILETIME* write);
    // `creation` must be null. A null time, or one of 0, leaves that time as it is.
    BOOL SetFileTime(HANDLE file, const FILETIME* creation, const FILETIME* access,
                     const FILETIME* write);
    DWORD GetFileAttributesW(LPCWSTR path);
    // Read-only set takes the write permission from all, cleared gives it to the owner. The
    // other bits have no place on the disk and are accepted.
    BOOL SetFileAttributesW(LPCWSTR path, DWORD attributes);
    // Refuses folders, links to folders, and files without any write permission bit.
    BOOL DeleteFileW(LPCWSTR path);
    BOOL CreateDirectoryW(LPCWSTR path, SECURITY_ATTRIBUTES* security);

    // A last component of exactly "*" lists the folder, "." and ".." first; any other path finds
    // the entry itself. A link shows its target's facts; of an entry that can't be read, size and
    // times are 0.
    HANDLE FindFirstFileW(LPCWSTR pattern, WIN32_FIND_DATAW* record);
    BOOL FindNextFileW(HANDLE find, WIN32_FIND_DATAW* record);
    BOOL FindClose(HANDLE find);
}
