// The loader of shared libraries runs these when the module is loaded and when the process ends.
#include "module/lifecycle.h"

namespace
{

__attribute__((constructor)) void Loaded()
{
    tarnwell::StartModule();
}

__attribute__((destructor)) void Unloading()
{
    // The library stays loaded until then.
    tarnwell::StopModule(tarnwell::Ending::OfProcess);
}

} // namespace
