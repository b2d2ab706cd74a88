#include "module/lifecycle.h"

#include "ftp/ftppool.h"
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

void StopModule(Ending ending)
{
    if (ending == Ending::OfModule)
        CloseIdleConnections();
    if (started)
        ReleaseClassTable();
    started = false;
}

bool ModuleStarted()
{
    return started;
}

} // namespace tarnwell
