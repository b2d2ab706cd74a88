// A client that the server runs.
#pragma once

#include "relay/client/asked.h"
#include "relay/client/connection.h"

namespace tarnwell::relay
{

// The way to the server that the variables name, which has been told what to run. Throws if there
// is none.
Connection Begin(const Asked& asked);

} // namespace tarnwell::relay
