// The start and the end of the module in a process.
#pragma once

namespace tarnwell
{

// Runs once when the module is loaded, before any entry point. If it fails, the module gives out
// no class objects.
void StartModule();

// What ends: the process, or only the module's time in it.
enum class Ending
{
    OfProcess,
    OfModule
};

// Runs once: lets go of the class objects. Where the process goes on, the connections to servers
// that wait for their next use are closed; else the system does that, and nothing that other
// threads may still be using is touched.
void StopModule(Ending ending = Ending::OfProcess);

bool ModuleStarted();

} // namespace tarnwell
