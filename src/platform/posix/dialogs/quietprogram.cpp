#include "platform/posix/dialogs/quietprogram.h"

#include "platform/posix/processes/childprocess.h"
#include "platform/posix/processes/spawnsetup.h"

#include <fcntl.h>
#include <unistd.h>

namespace tarnwell::posix
{

ProgramEnd RunQuietly(std::vector<std::string> arguments)
{
    const FileDescriptor nothing(open("/dev/null", O_RDWR | O_CLOEXEC));
    SpawnSetup setup({nothing.Get(), nothing.Get(), nothing.Get()});
    pid_t id = -1;
    const int number = setup.Spawn(&id, arguments, environ);
    if (number != 0)
        return {number, std::nullopt};
    ChildProcess child;
    child.Started(id);
    child.Wait();
    return {0, child.ExitCode()};
}

} // namespace tarnwell::posix
