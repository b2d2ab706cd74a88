// The type library in the module's own file, for the component registry.
#pragma once

#include "platform/win32.h"

namespace tarnwell
{

// Registers the library for all users, or for the present one if `perUser` is set and the system
// offers that. On a platform without a component registry there is nothing to do: S_OK.
HRESULT RegisterModuleTypeLibrary(bool perUser);
HRESULT UnregisterModuleTypeLibrary(bool perUser);

} // namespace tarnwell
