#include "platform/posix/dialogs/terminal.h"

#include "platform/posix/files/filehandle.h"

#include <cerrno>
#include <fcntl.h>
#include <string_view>
#include <unistd.h>

namespace tarnwell::posix
{
namespace
{

bool Write(int descriptor, std::string_view text)
{
    while (!text.empty())
    {
        const ssize_t count = write(descriptor, text.data(), text.size());
        if (count < 0 && errno != EINTR)
            return false;
        if (count > 0)
            text.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

// Up to the line's end, which the rest of the answer must not outlive: the next question would
// take it.
std::string ReadLine(int descriptor)
{
    std::string line;
    char c = 0;
    while (c != '\n')
    {
        const ssize_t count = read(descriptor, &c, 1);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return {};
        line += c;
    }
    return line;
}

} // namespace

bool AskOnTerminal(const std::string& question)
{
    const FileDescriptor terminal(open("/dev/tty", O_RDWR | O_CLOEXEC | O_NOCTTY));
    // In the background, reading would stop the whole host.
    if (!terminal || tcgetpgrp(terminal.Get()) != getpgrp())
        return false;
    if (!Write(terminal.Get(), question + " [y/N] "))
        return false;
    const std::string answer = ReadLine(terminal.Get());
    return answer.starts_with('y') || answer.starts_with('Y');
}

} // namespace tarnwell::posix
