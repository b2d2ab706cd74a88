#include "system.h"

#include <windows.h>

#include <atomic>
#include <cstdlib>

namespace tarnwell::host
{

namespace
{

// The system calls the handler on a thread of its own.
std::atomic<bool> interrupted = false;

BOOL WINAPI OnControl(DWORD event)
{
    if (event != CTRL_C_EVENT)
        return FALSE;
    // A second one ends the program, since what is to be cancelled may wait for somebody.
    return interrupted.exchange(true) ? FALSE : TRUE;
}

} // namespace

InterruptWatch::InterruptWatch()
{
    interrupted = false;
    SetConsoleCtrlHandler(OnControl, TRUE);
}

InterruptWatch::~InterruptWatch()
{
    SetConsoleCtrlHandler(OnControl, FALSE);
}

bool InterruptWatch::Interrupted()
{
    return interrupted;
}

void EndProgram(int exitCode)
{
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(exitCode));
    std::abort();
}

} // namespace tarnwell::host
