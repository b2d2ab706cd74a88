#include "system.h"

#include <cerrno>
#include <cstdlib>
#include <sys/ioctl.h>
#include <unistd.h>

namespace tarnwell::host
{

namespace
{

bool WriteAll(int descriptor, std::string_view bytes)
{
    while (!bytes.empty())
    {
        const ssize_t written = write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

bool TerminalIsCapable()
{
    const char* const kind = std::getenv("TERM");
    return kind != nullptr && *kind != '\0' && std::string_view(kind) != "dumb";
}

} // namespace

bool WriteOutput(std::string_view bytes)
{
    return WriteAll(STDOUT_FILENO, bytes);
}

bool WriteErrors(std::string_view bytes)
{
    return WriteAll(STDERR_FILENO, bytes);
}

bool OutputIsTerminal()
{
    return isatty(STDOUT_FILENO) == 1;
}

bool ErrorsAreTerminal()
{
    return isatty(STDERR_FILENO) == 1;
}

bool OutputObeysSequences()
{
    return OutputIsTerminal() && TerminalIsCapable();
}

bool ErrorsObeySequences()
{
    return ErrorsAreTerminal() && TerminalIsCapable();
}

std::size_t OutputWidth()
{
    winsize size{};
    return ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

std::optional<std::size_t> ReadInput(void* buffer, std::size_t size)
{
    ssize_t got = 0;
    do
    {
        got = read(STDIN_FILENO, buffer, size);
    } while (got < 0 && errno == EINTR);
    if (got < 0)
        return std::nullopt;
    return static_cast<std::size_t>(got);
}

} // namespace tarnwell::host
