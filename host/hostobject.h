// The object that answers the module's questions.
#pragma once

#include "arguments.h"

#include <tarnwell/pointers.h>

namespace tarnwell::host
{

// Answers to IHostWindow (there is no window), IHostCredentials and IHostSettings, from the
// options of the command line.
ComPtr<IUnknown> MakeHostObject(const CommandLine& line);

} // namespace tarnwell::host
