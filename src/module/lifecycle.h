// The start and the end of the module in a process.
#pragma once

namespace tarnwell
{

// Runs once when the module is loaded, before any entry point. If it fails, the module gives out
// no class objects.
void StartModule();

// Runs once when the process ends: lets go of the class objects.
void StopModule();

bool ModuleStarted();

} // namespace tarnwell
