// Starting a process from what the platform's calls are given.
#pragma once

#include "platform/posix/processes/childprocess.h"
#include "platform/win32.h"

#include <memory>
#include <sys/types.h>

namespace tarnwell::posix
{

struct StartRequest
{
    LPCWSTR commandLine;
    LPCWSTR environment; // null: the host's
    LPCWSTR folder;      // null: the host's
    const STARTUPINFOW* startup;
    static constexpr pid_t ownGroup = -1;
    pid_t group = 0;                     // to be a member of; 0: the host's
    std::shared_ptr<ChildProcess> child; // what becomes the process; null: a new one
};

// As CreateProcessW, which checks what may be asked.
BOOL StartProcess(const StartRequest& request, PROCESS_INFORMATION* information);

} // namespace tarnwell::posix
