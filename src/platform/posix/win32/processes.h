// Pipes, environment, processes, threads.
#pragma once

#include "platform/posix/win32/files.h"

inline constexpr DWORD HANDLE_FLAG_INHERIT = 1;

inline constexpr DWORD STARTF_USESHOWWINDOW = 0x1;
inline constexpr DWORD STARTF_USESTDHANDLES = 0x100;
inline constexpr WORD SW_HIDE = 0;
inline constexpr DWORD CREATE_UNICODE_ENVIRONMENT = 0x400;

inline constexpr DWORD INFINITE = 0xFFFFFFFF;
inline constexpr DWORD WAIT_OBJECT_0 = 0;
inline constexpr DWORD WAIT_TIMEOUT = 258;
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
    // HANDLE_FLAG_INHERIT can be given to any handle and taken from it, and changes nothing: the
    // standard handles that CreateProcessW is given are inherited, and no other ever. All else is
    // ERROR_NOT_SUPPORTED.
    BOOL SetHandleInformation(HANDLE handle, DWORD mask, DWORD flags);

    // The environment as NAME=VALUE texts, each terminated, and one more terminator.
    LPWSTR GetEnvironmentStringsW();
    BOOL FreeEnvironmentStringsW(LPWSTR block);

    // Starts the program that the command line begins with, searched for in the PATH's folders that
    // are whole paths, before the folder is changed; a terminal is the host's, there are no windows
    // to hide. `application` and both security attributes must
    // be null, `inherit` set, and STARTF_USESTDHANDLES given: the three handles become the child's
    // descriptors 0 to 2, and it gets no others. An environment needs CREATE_UNICODE_ENVIRONMENT;
    // without one the child has the host's.
    // ERROR_FILE_NOT_FOUND means that there is no such program, ERROR_DIRECTORY that `folder` is
    // none, ERROR_INVALID_NAME that some text stands for no bytes.
    BOOL CreateProcessW(LPCWSTR application, LPWSTR commandLine, SECURITY_ATTRIBUTES* process,
                        SECURITY_ATTRIBUTES* thread, BOOL inherit, DWORD flags, LPVOID environment,
                        LPCWSTR folder, STARTUPINFOW* startup, PROCESS_INFORMATION* information);
    // For processes, threads and events. Only for processes may `milliseconds` be other than
    // INFINITE, and a wait with a limit may end early, with WAIT_TIMEOUT, too.
    DWORD WaitForSingleObject(HANDLE handle, DWORD milliseconds);
    // 128 and the signal's number for a process that a signal ended. ERROR_WAIT_NO_CHILDREN if the
    // host took the code away, as one does that ignores SIGCHLD or waits for all its children.
    BOOL GetExitCodeProcess(HANDLE process, DWORD* code);

    // A thread in which the host's signal handlers never run, other than for its own faults.
    // `security` and `id` must be null, `stackSize` and `flags` 0. 0 if there is no thread.
    std::uintptr_t _beginthreadex(void* security, unsigned stackSize, unsigned (*start)(void*),
                                  void* argument, unsigned flags, unsigned* id);

    // Once set, an event stays so: `manualReset` must be set, `initialState` clear, and `security`
    // and `name` null. Null if there is no event.
    HANDLE CreateEventW(SECURITY_ATTRIBUTES* security, BOOL manualReset, BOOL initialState,
                        LPCWSTR name);
    BOOL SetEvent(HANDLE event);
}
