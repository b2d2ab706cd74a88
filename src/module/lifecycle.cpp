#include "module/lifecycle.h"

#include "module/classtable.h"

namespace tarnwell
{

namespace
{
bool started = false;
}

void StartModule()
{
    started = SUCCEEDED(InitializeClassTable());
}

void StopModule()
{
    ReleaseClassTable();
    started = false;
}

bool ModuleStarted()
{
    return started;
}

} // namespace tarnwell
