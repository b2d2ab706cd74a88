// What the call for control codes takes and gives.
#pragma once

#include "platform/posix/win32/types.h"

using NTSTATUS = LONG;

struct IO_STATUS_BLOCK
{
    union
    {
        NTSTATUS Status;
        void* Pointer;
    };
    ULONG_PTR Information;
};

// Never called; only null pointers to it are passed.
using PIO_APC_ROUTINE = void (*)(void* context, IO_STATUS_BLOCK* status, ULONG reserved);
