// The class that a failure names.
#pragma once

#include <tarnwell/com.h>

#include <utility>

namespace tarnwell::test
{

// By this thread's last failure.
extern thread_local GUID named;

// Whether `call` fails and names this class.
template <class Call> bool Names(const GUID& classId, Call&& call)
{
    named = {};
    return std::forward<Call>(call)() < 0 && named == classId;
}

} // namespace tarnwell::test
