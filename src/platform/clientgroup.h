// Programs that end with their owner, and their output as it comes.
#pragma once

#include "platform/win32.h"

extern "C"
{
    // A group of processes, with none in it yet. INVALID_HANDLE_VALUE, with the last error set, if
    // there is none to be had. With its handle, or with this process, all processes in it end, and
    // what they have started, but for what has taken leave of them on purpose.
    HANDLE CreateClientGroup();
    // CreateProcessW with `environment`, which may be null, as wide text: a process in the group.
    // It inherits the three streams of `startup` and nothing else.
    BOOL StartInGroup(HANDLE group, LPWSTR commandLine, LPVOID environment, LPCWSTR folder,
                      STARTUPINFOW* startup, PROCESS_INFORMATION* information);
    // Ends what is in the group at once. Nothing can be started in it any more.
    BOOL EndClientGroup(HANDLE group);

    // What a pipe of the group's clients has, up to `size` bytes, after a wait if that is nothing
    // yet. 0 bytes, or a failure, at its end. Once the group was ended the pipe is at its end when
    // nothing is in it: what has taken leave of the group may keep the other end for ever.
    BOOL ReadPipe(HANDLE group, HANDLE pipe, void* buffer, DWORD size, DWORD* read);
}
