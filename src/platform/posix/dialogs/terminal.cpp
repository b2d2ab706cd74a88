#include "platform/posix/dialogs/terminal.h"

#include "platform/posix/files/descriptor.h"

#include <cerrno>
#include <fcntl.h>
#include <string_view>
#include <unistd.h>

namespace tarnwell::posix
{
namespace
{

// Reads the whole line: what is left of an answer would answer the next question.
std::string ReadLine(int descriptor)
{
    std::string line;
    char c = 0;
    while (c != '\n')
    {
        if (Restarted([&] { return read(descriptor, &c, 1); }) <= 0)
            return {};
        line += c;
    }
    return line;
}

} // namespace

bool AskOnTerminal(const std::string& question)
{
    const FileDescriptor terminal = Open("/dev/tty", O_RDWR);
    // In the background, reading would stop the whole host.
    if (!terminal || tcgetpgrp(terminal.Get()) != getpgrp())
        return false;
    if (!WriteAll(terminal.Get(), question + " [y/N] "))
        return false;
    const std::string answer = ReadLine(terminal.Get());
    return answer.starts_with('y') || answer.starts_with('Y');
}

} // namespace tarnwell::posix
