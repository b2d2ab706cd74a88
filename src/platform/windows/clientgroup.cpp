#include "platform/clientgroup.h"

extern "C" HANDLE CreateClientGroup()
{
    const HANDLE job = CreateJobObjectW(nullptr, nullptr);
    if (job == nullptr)
        return INVALID_HANDLE_VALUE;
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    if (SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof limits))
        return job;
    const DWORD error = GetLastError();
    CloseHandle(job);
    SetLastError(error);
    return INVALID_HANDLE_VALUE;
}

// It doesn't run before it is in the group, so that nothing that it starts is outside.
extern "C" BOOL StartInGroup(HANDLE group, LPWSTR commandLine, LPVOID environment, LPCWSTR folder,
                             STARTUPINFOW* startup, PROCESS_INFORMATION* information)
{
    const DWORD flags =
        CREATE_SUSPENDED | (environment == nullptr ? 0 : CREATE_UNICODE_ENVIRONMENT);
    if (!CreateProcessW(nullptr, commandLine, nullptr, nullptr, TRUE, flags, environment, folder,
                        startup, information))
        return FALSE;
    if (AssignProcessToJobObject(group, information->hProcess) &&
        ResumeThread(information->hThread) != static_cast<DWORD>(-1))
        return TRUE;
    const DWORD error = GetLastError();
    TerminateProcess(information->hProcess, 1);
    CloseHandle(information->hThread);
    CloseHandle(information->hProcess);
    SetLastError(error);
    return FALSE;
}

extern "C" BOOL EndClientGroup(HANDLE group)
{
    return TerminateJobObject(group, 1);
}

extern "C" BOOL ReadPipe(HANDLE pipe, void* buffer, DWORD size, DWORD* read)
{
    return ReadFile(pipe, buffer, size, read, nullptr);
}
