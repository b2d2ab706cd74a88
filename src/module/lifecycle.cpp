#include "module/lifecycle.h"

#include "module/classtable.h"

namespace tarnwell
{

namespace
{
constinit bool started = false;
}

void StartModule()
{
    started = SUCCEEDED(InitializeClassTable());
}

void StopModule()
{
    if (started)
        ReleaseClassTable();
    started = false;
}

bool ModuleStarted()
{
    return started;
}

} // namespace tarnwell
