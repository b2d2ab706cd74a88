#include "system.h"

#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace tarnwell::host
{

namespace
{

bool HasDisplay()
{
    for (const char* const variable : {"DISPLAY", "WAYLAND_DISPLAY"})
    {
        const char* const value = std::getenv(variable);
        if (value != nullptr && *value != 0)
            return true;
    }
    return false;
}

// A program in the background would be stopped if it read there.
bool HasTerminal()
{
    const int terminal = open("/dev/tty", O_RDWR | O_CLOEXEC | O_NOCTTY);
    if (terminal < 0)
        return false;
    const bool isOurs = tcgetpgrp(terminal) == getpgrp();
    close(terminal);
    return isOurs;
}

} // namespace

bool SomebodyCanAnswer()
{
    return HasDisplay() || HasTerminal();
}

} // namespace tarnwell::host
