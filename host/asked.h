// Questions that the user can end.
#pragma once

#include "errors.h"
#include "system.h"

namespace tarnwell::host
{

// What the module asks meanwhile.
inline bool GoesOn()
{
    return !InterruptWatch::Interrupted();
}

// Runs a call of the client's functions that asks `GoesOn`, which Ctrl-C answers. Throws Failure.
template <class F> auto Asked(F&& call) -> decltype(call())
{
    const InterruptWatch watch;
    return Told(call);
}

} // namespace tarnwell::host
