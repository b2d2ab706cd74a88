// The platform operations, for Linux. Each does what its namesake on Windows does for the flags
// and arguments in use here; what is not supported fails with ERROR_NOT_SUPPORTED or
// ERROR_INVALID_PARAMETER. A failing call sets the calling thread's last error, never to 0.
#pragma once

#include <tarnwell/com.h>

#include <cstdarg>
#include <pthread.h>

using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using LONG = std::int32_t;
using UINT = std::uint32_t;
using LPVOID = void*;
using LONGLONG = std::int64_t;
using DWORD_PTR = std::uintptr_t;
using LONG_PTR = std::intptr_t;
using LANGID = WORD;
using WCHAR = char16_t;
using LPWSTR = WCHAR*;
using LPCWSTR = const WCHAR*;
using LPCVOID = const void*;
using HANDLE = void*;
using HMODULE = void*;
using HRSRC = void*;
using HGLOBAL = void*;
using HLOCAL = void*;

// Callbacks have the plain calling convention.
#define CALLBACK

// ---- Errors ------------------------------------------------------------------------------

inline constexpr DWORD ERROR_SUCCESS = 0;
inline constexpr DWORD ERROR_FILE_NOT_FOUND = 2;
inline constexpr DWORD ERROR_PATH_NOT_FOUND = 3;
inline constexpr DWORD ERROR_TOO_MANY_OPEN_FILES = 4;
inline constexpr DWORD ERROR_ACCESS_DENIED = 5;
inline constexpr DWORD ERROR_INVALID_HANDLE = 6;
inline constexpr DWORD ERROR_NOT_ENOUGH_MEMORY = 8;
inline constexpr DWORD ERROR_OUTOFMEMORY = 14;
inline constexpr DWORD ERROR_NOT_SAME_DEVICE = 17;
inline constexpr DWORD ERROR_NO_MORE_FILES = 18;
inline constexpr DWORD ERROR_WRITE_PROTECT = 19;
inline constexpr DWORD ERROR_NOT_READY = 21;
inline constexpr DWORD ERROR_GEN_FAILURE = 31;
inline constexpr DWORD ERROR_SHARING_VIOLATION = 32;
inline constexpr DWORD ERROR_NOT_SUPPORTED = 50;
inline constexpr DWORD ERROR_FILE_EXISTS = 80;
inline constexpr DWORD ERROR_INVALID_PARAMETER = 87;
inline constexpr DWORD ERROR_BROKEN_PIPE = 109;
inline constexpr DWORD ERROR_BUFFER_OVERFLOW = 111;
inline constexpr DWORD ERROR_DISK_FULL = 112;
inline constexpr DWORD ERROR_CALL_NOT_IMPLEMENTED = 120;
inline constexpr DWORD ERROR_INSUFFICIENT_BUFFER = 122;
inline constexpr DWORD ERROR_INVALID_NAME = 123;
inline constexpr DWORD ERROR_WAIT_NO_CHILDREN = 128;
inline constexpr DWORD ERROR_NEGATIVE_SEEK = 131;
inline constexpr DWORD ERROR_SEEK_ON_DEVICE = 132;
inline constexpr DWORD ERROR_DIR_NOT_EMPTY = 145;
inline constexpr DWORD ERROR_BUSY = 170;
inline constexpr DWORD ERROR_ALREADY_EXISTS = 183;
inline constexpr DWORD ERROR_BAD_EXE_FORMAT = 193;
inline constexpr DWORD ERROR_FILENAME_EXCED_RANGE = 206;
inline constexpr DWORD ERROR_FILE_TOO_LARGE = 223;
inline constexpr DWORD ERROR_NO_WORK_DONE = 235;
inline constexpr DWORD ERROR_DIRECTORY = 267;
inline constexpr DWORD ERROR_INVALID_FLAGS = 1004;
inline constexpr DWORD ERROR_IO_DEVICE = 1117;
inline constexpr DWORD ERROR_TOO_MANY_LINKS = 1142;
inline constexpr DWORD ERROR_CANCELLED = 1223;
inline constexpr DWORD ERROR_DISK_QUOTA_EXCEEDED = 1295;
inline constexpr DWORD ERROR_RESOURCE_TYPE_NOT_FOUND = 1813;
inline constexpr DWORD ERROR_RESOURCE_NAME_NOT_FOUND = 1814;
inline constexpr DWORD ERROR_RESOURCE_LANG_NOT_FOUND = 1815;
inline constexpr DWORD ERROR_CANT_RESOLVE_FILENAME = 1921;
inline constexpr DWORD ERROR_RESOURCE_ENUM_USER_STOP = 15106;

extern "C" DWORD GetLastError();
extern "C" void SetLastError(DWORD error);

// ---- Files -------------------------------------------------------------------------------

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
    // Of files, pipes, processes and threads. One of a process or thread must not be closed twice.
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

// ---- Temporary files ----------------------------------------------------------------------

extern "C"
{
    // TMPDIR if that is an absolute path, else /tmp; ends in a separator. The result is the length
    // without the terminator; 0 with ERROR_INSUFFICIENT_BUFFER if `size`, in units, is too small.
    DWORD GetTempPathW(DWORD size, LPWSTR buffer);
    // Makes an empty file that only the user can open: the prefix, hexadecimal digits and ".tmp".
    // `unique` must be 0; `path` has MAX_PATH units, and the path must fit (ERROR_BUFFER_OVERFLOW).
    // ERROR_DIRECTORY if the folder is none. The result is the number in the name, never 0.
    UINT GetTempFileNameW(LPCWSTR folder, LPCWSTR prefix, UINT unique, LPWSTR path);
}

// ---- Language, messages, resources -----------------------------------------------------------

inline constexpr DWORD FORMAT_MESSAGE_ALLOCATE_BUFFER = 0x100;
inline constexpr DWORD FORMAT_MESSAGE_IGNORE_INSERTS = 0x200;
inline constexpr DWORD FORMAT_MESSAGE_FROM_STRING = 0x400;
inline constexpr DWORD FORMAT_MESSAGE_FROM_SYSTEM = 0x1000;
inline constexpr DWORD FORMAT_MESSAGE_ARGUMENT_ARRAY = 0x2000;

inline LPCWSTR MAKEINTRESOURCEW(WORD id)
{
    return reinterpret_cast<LPCWSTR>(static_cast<DWORD_PTR>(id));
}

inline const LPCWSTR RT_STRING = MAKEINTRESOURCEW(6);

using ENUMRESNAMEPROCW = BOOL (*)(HMODULE module, LPCWSTR type, LPWSTR name, LONG_PTR param);
using ENUMRESLANGPROCW = BOOL (*)(HMODULE module, LPCWSTR type, LPCWSTR name, WORD language,
                                  LONG_PTR param);

extern "C"
{
    // From LC_ALL, LC_MESSAGES or LANG, the first that is set: Japanese is 1041, all else 2057.
    LANGID GetUserDefaultUILanguage();

    // Supports FORMAT_MESSAGE_ALLOCATE_BUFFER (required; the caller frees with LocalFree) with
    // either FORMAT_MESSAGE_FROM_STRING and FORMAT_MESSAGE_ARGUMENT_ARRAY (all inserts are
    // strings) or FORMAT_MESSAGE_FROM_SYSTEM. The system text is the C library's, in the
    // language of the environment, and ends in CR LF; 0 for codes that have no counterpart.
    DWORD FormatMessageW(DWORD flags, LPCVOID source, DWORD id, DWORD language, LPWSTR buffer,
                         DWORD size, va_list* arguments);
    HLOCAL LocalFree(HLOCAL memory);

    // String tables only (type RT_STRING): blocks of 16 length-prefixed texts, as Windows keeps
    // them. `module` is ignored: a library has one table.
    BOOL EnumResourceNamesW(HMODULE module, LPCWSTR type, ENUMRESNAMEPROCW callback,
                            LONG_PTR param);
    BOOL EnumResourceLanguagesW(HMODULE module, LPCWSTR type, LPCWSTR name,
                                ENUMRESLANGPROCW callback, LONG_PTR param);
    HRSRC FindResourceExW(HMODULE module, LPCWSTR type, LPCWSTR name, WORD language);
    HGLOBAL LoadResource(HMODULE module, HRSRC resource);
    void* LockResource(HGLOBAL resource);
    // In bytes.
    DWORD SizeofResource(HMODULE module, HRSRC resource);
}

// ---- Bytes to text ---------------------------------------------------------------------------

inline constexpr UINT CP_UTF8 = 65001;

// From CP_UTF8 only, without flags and with a positive size. Each longest sequence that might have
// begun a character and doesn't become one turns into U+FFFD. The result is the number of units;
// with a `unitCount` of 0, those needed. 0 with ERROR_INSUFFICIENT_BUFFER if they don't fit.
extern "C" int MultiByteToWideChar(UINT codePage, DWORD flags, const char* bytes, int byteCount,
                                   LPWSTR units, int unitCount);

// ---- Processes and threads -------------------------------------------------------------------

inline constexpr DWORD HANDLE_FLAG_INHERIT = 1;

inline constexpr DWORD STARTF_USESHOWWINDOW = 0x1;
inline constexpr DWORD STARTF_USESTDHANDLES = 0x100;
inline constexpr WORD SW_HIDE = 0;
inline constexpr DWORD CREATE_UNICODE_ENVIRONMENT = 0x400;

inline constexpr DWORD INFINITE = 0xFFFFFFFF;
inline constexpr DWORD WAIT_OBJECT_0 = 0;
inline constexpr DWORD WAIT_FAILED = 0xFFFFFFFF;
inline constexpr DWORD STILL_ACTIVE = 259;

struct STARTUPINFOW
{
    DWORD cb;
    LPWSTR lpReserved;
    LPWSTR lpDesktop;
    LPWSTR lpTitle;
    DWORD dwX;
    DWORD dwY;
    DWORD dwXSize;
    DWORD dwYSize;
    DWORD dwXCountChars;
    DWORD dwYCountChars;
    DWORD dwFillAttribute;
    DWORD dwFlags;
    WORD wShowWindow;
    WORD cbReserved2;
    BYTE* lpReserved2;
    HANDLE hStdInput;
    HANDLE hStdOutput;
    HANDLE hStdError;
};

struct PROCESS_INFORMATION
{
    HANDLE hProcess;
    HANDLE hThread;
    DWORD dwProcessId;
    DWORD dwThreadId;
};

extern "C"
{
    // `size` is a suggestion and not taken: a pipe here holds 64 KiB.
    BOOL CreatePipe(HANDLE* read, HANDLE* write, SECURITY_ATTRIBUTES* security, DWORD size);
    // HANDLE_FLAG_INHERIT can be taken from any handle, as none is ever inherited. All else is
    // ERROR_NOT_SUPPORTED.
    BOOL SetHandleInformation(HANDLE handle, DWORD mask, DWORD flags);

    // The environment as NAME=VALUE texts, each terminated, and one more terminator.
    LPWSTR GetEnvironmentStringsW();
    BOOL FreeEnvironmentStringsW(LPWSTR block);

    // Starts the program that the command line begins with, searched for on the PATH; a terminal
    // is the host's, there are no windows to hide. `application` and both security attributes must
    // be null, `inherit` set, and STARTF_USESTDHANDLES given: the three handles become the child's
    // descriptors 0 to 2, and it gets no others. An environment needs CREATE_UNICODE_ENVIRONMENT;
    // without one the child has the host's.
    // ERROR_FILE_NOT_FOUND means that there is no such program, ERROR_DIRECTORY that `folder` is
    // none, ERROR_INVALID_NAME that some text stands for no bytes.
    BOOL CreateProcessW(LPCWSTR application, LPWSTR commandLine, SECURITY_ATTRIBUTES* process,
                        SECURITY_ATTRIBUTES* thread, BOOL inherit, DWORD flags, LPVOID environment,
                        LPCWSTR folder, STARTUPINFOW* startup, PROCESS_INFORMATION* information);
    // For processes and threads, and without a limit: `milliseconds` must be INFINITE.
    DWORD WaitForSingleObject(HANDLE handle, DWORD milliseconds);
    // 128 and the signal's number for a process that a signal ended. ERROR_WAIT_NO_CHILDREN if the
    // host took the code away, as one does that ignores SIGCHLD or waits for all its children.
    BOOL GetExitCodeProcess(HANDLE process, DWORD* code);

    // A thread in which the host's signal handlers never run, other than for its own faults.
    // `security` and `id` must be null, `stackSize` and `flags` 0. 0 if there is no thread.
    std::uintptr_t _beginthreadex(void* security, unsigned stackSize, unsigned (*start)(void*),
                                  void* argument, unsigned flags, unsigned* id);
}

// ---- The calendar ----------------------------------------------------------------------------

// In UTC.
struct SYSTEMTIME
{
    WORD wYear;
    WORD wMonth;
    WORD wDayOfWeek;
    WORD wDay;
    WORD wHour;
    WORD wMinute;
    WORD wSecond;
    WORD wMilliseconds;
};

extern "C"
{
    // The day of the week isn't looked at. ERROR_INVALID_PARAMETER for what is no day and time
    // from the year 1601 on.
    BOOL SystemTimeToFileTime(const SYSTEMTIME* parts, FILETIME* time);
}

// ---- Components ------------------------------------------------------------------------------

extern "C"
{
    HRESULT CoFileTimeNow(FILETIME* now);
    // There is no component registry: REGDB_E_CLASSNOTREG always, `*progId` null.
    HRESULT ProgIDFromCLSID(REFCLSID clsid, LPOLESTR* progId);
    void CoTaskMemFree(void* memory);
}

struct CRITICAL_SECTION
{
    pthread_mutex_t mutex;
};

extern "C"
{
    // `spinCount` and `flags` are ignored. The section is recursive.
    BOOL InitializeCriticalSectionEx(CRITICAL_SECTION* section, DWORD spinCount, DWORD flags);
    void EnterCriticalSection(CRITICAL_SECTION* section);
    void LeaveCriticalSection(CRITICAL_SECTION* section);
    void DeleteCriticalSection(CRITICAL_SECTION* section);
}

// ---- Dialogs ---------------------------------------------------------------------------------

inline constexpr UINT MB_YESNOCANCEL = 0x3;
inline constexpr UINT MB_ICONINFORMATION = 0x40;
inline constexpr int IDCANCEL = 2;
inline constexpr int IDYES = 6;

// Asks through the desktop's dialog program if there is a display, else on the terminal, the
// caption left out. Only MB_YESNOCANCEL with MB_ICONINFORMATION is supported; anything but a yes,
// and nobody to ask, is IDCANCEL.
extern "C" int MessageBoxW(HWND owner, LPCWSTR text, LPCWSTR caption, UINT style);

// ---- Shell -----------------------------------------------------------------------------------

inline constexpr UINT FO_DELETE = 3;
inline constexpr WORD FOF_NOCONFIRMATION = 0x10;
inline constexpr WORD FOF_ALLOWUNDO = 0x40;
inline constexpr WORD FOF_NORECURSION = 0x1000;

struct SHFILEOPSTRUCTW
{
    HWND hwnd;
    UINT wFunc;
    LPCWSTR pFrom;
    LPCWSTR pTo;
    WORD fFlags;
    BOOL fAnyOperationsAborted;
    void* hNameMappings;
    LPCWSTR lpszProgressTitle;
};

inline constexpr UINT SHGFI_SMALLICON = 0x1;
inline constexpr UINT SHGFI_SYSICONINDEX = 0x4000;

struct SHFILEINFOW
{
    void* hIcon;
    int iIcon;
    DWORD dwAttributes;
    WCHAR szDisplayName[MAX_PATH];
    WCHAR szTypeName[80];
};

extern "C"
{
    // FO_DELETE only, and for good: FOF_ALLOWUNDO is ERROR_NOT_SUPPORTED. `pFrom` is a list of
    // terminated paths closed by an empty one; the names are literal. Links are removed, never
    // followed. An empty list, a root, and a last component of "." or ".." are
    // ERROR_INVALID_PARAMETER. The result is 0 or an error code; a "no" to the question is
    // ERROR_CANCELLED with fAnyOperationsAborted set.
    int SHFileOperationW(SHFILEOPSTRUCTW* operation);
    // There are no system image lists here: 0.
    DWORD_PTR SHGetFileInfoW(LPCWSTR path, DWORD attributes, SHFILEINFOW* info, UINT size,
                             UINT flags);
}
