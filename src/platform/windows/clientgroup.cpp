#include "platform/clientgroup.h"

#include <algorithm>
#include <iterator>
#include <memory>

namespace
{

// Another thread may be about to start another client, whose streams are inheritable then. One that
// stays must not hold them: their owner would never see their end.
class HandlesToInherit
{
public:
    // The streams stay the caller's. False, with the last error set, if the system can't.
    bool Set(const STARTUPINFOW& startup)
    {
        const HANDLE all[] = {startup.hStdInput, startup.hStdOutput, startup.hStdError};
        std::copy(std::begin(all), std::end(all), handles_);
        SIZE_T size = 0;
        InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
        memory_.reset(HeapAlloc(GetProcessHeap(), 0, size));
        if (!memory_)
        {
            SetLastError(ERROR_NOT_ENOUGH_MEMORY);
            return false;
        }
        const auto list = static_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(memory_.get());
        if (!InitializeProcThreadAttributeList(list, 1, 0, &size))
            return false;
        list_.reset(list);
        return UpdateProcThreadAttribute(list, 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, handles_,
                                         sizeof handles_, nullptr, nullptr) != 0;
    }
    LPPROC_THREAD_ATTRIBUTE_LIST Get() const
    {
        return list_.get();
    }

private:
    struct FreeMemory
    {
        void operator()(void* memory) const
        {
            HeapFree(GetProcessHeap(), 0, memory);
        }
    };
    struct EndList
    {
        using pointer = LPPROC_THREAD_ATTRIBUTE_LIST;
        void operator()(LPPROC_THREAD_ATTRIBUTE_LIST list) const
        {
            DeleteProcThreadAttributeList(list);
        }
    };

    HANDLE handles_[3] = {};
    std::unique_ptr<void, FreeMemory> memory_;
    std::unique_ptr<LPPROC_THREAD_ATTRIBUTE_LIST, EndList> list_;
};

} // namespace

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
    HandlesToInherit handles;
    if (!handles.Set(*startup))
        return FALSE;
    STARTUPINFOEXW extended{*startup, handles.Get()};
    extended.StartupInfo.cb = sizeof extended;
    const DWORD flags = CREATE_SUSPENDED | EXTENDED_STARTUPINFO_PRESENT |
                        (environment == nullptr ? 0 : CREATE_UNICODE_ENVIRONMENT);
    if (!CreateProcessW(nullptr, commandLine, nullptr, nullptr, TRUE, flags, environment, folder,
                        &extended.StartupInfo, information))
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

// Nothing takes leave of a group here, so that its pipes end with it.
extern "C" BOOL ReadPipe(HANDLE, HANDLE pipe, void* buffer, DWORD size, DWORD* read)
{
    return ReadFile(pipe, buffer, size, read, nullptr);
}
