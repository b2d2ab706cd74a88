#include "platform/readall.h"
#include "system.h"

#include <windows.h>

#include <cstdio>
#include <fcntl.h>
#include <io.h>

namespace tarnwell::host
{

namespace
{

bool WriteAll(DWORD stream, std::string_view bytes)
{
    const HANDLE handle = GetStdHandle(stream);
    while (!bytes.empty())
    {
        // The console refuses to take very much at once.
        const DWORD size = static_cast<DWORD>(bytes.size() < 0x4000 ? bytes.size() : 0x4000);
        DWORD written = 0;
        if (!WriteFile(handle, bytes.data(), size, &written, nullptr))
            return false;
        bytes.remove_prefix(written);
    }
    return true;
}

bool IsConsole(DWORD stream)
{
    DWORD mode = 0;
    return GetConsoleMode(GetStdHandle(stream), &mode) != FALSE;
}

// The process turned it on where the console knows it.
bool ObeysSequences(DWORD stream)
{
    DWORD mode = 0;
    return GetConsoleMode(GetStdHandle(stream), &mode) &&
           (mode & ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

} // namespace

bool WriteOutput(std::string_view bytes)
{
    return WriteAll(STD_OUTPUT_HANDLE, bytes);
}

bool WriteErrors(std::string_view bytes)
{
    return WriteAll(STD_ERROR_HANDLE, bytes);
}

bool OutputIsTerminal()
{
    return IsConsole(STD_OUTPUT_HANDLE);
}

bool ErrorsAreTerminal()
{
    return IsConsole(STD_ERROR_HANDLE);
}

bool OutputObeysSequences()
{
    return ObeysSequences(STD_OUTPUT_HANDLE);
}

bool ErrorsObeySequences()
{
    return ObeysSequences(STD_ERROR_HANDLE);
}

std::size_t OutputWidth()
{
    CONSOLE_SCREEN_BUFFER_INFO facts{};
    if (!GetConsoleScreenBufferInfo(GetStdHandle(STD_OUTPUT_HANDLE), &facts))
        return 0;
    return static_cast<std::size_t>(facts.srWindow.Right - facts.srWindow.Left + 1);
}

std::optional<std::size_t> ReadInput(void* buffer, std::size_t size)
{
    DWORD read = 0;
    const DWORD wanted = static_cast<DWORD>(size < 0x10000 ? size : 0x10000);
    if (ReadFile(GetStdHandle(STD_INPUT_HANDLE), buffer, wanted, &read, nullptr))
        return read;
    // How a pipe tells its end.
    if (GetLastError() == ERROR_BROKEN_PIPE)
        return 0;
    return std::nullopt;
}

bool SomebodyCanAnswer()
{
    // False in a service, whose dialogs nobody sees.
    USEROBJECTFLAGS flags{};
    DWORD size = 0;
    return !GetUserObjectInformationW(GetProcessWindowStation(), UOI_FLAGS, &flags, sizeof flags,
                                      &size) ||
           (flags.dwFlags & WSF_VISIBLE) != 0;
}

std::optional<std::string> OutputOf(const std::string& program, const char* arguments)
{
    FILE* const pipe = _popen((program + " " + arguments + " 2>NUL").c_str(), "rb");
    if (pipe == nullptr)
        return std::nullopt;
    const std::string output = ReadAll(pipe);
    return _pclose(pipe) == 0 ? std::optional(output) : std::nullopt;
}

} // namespace tarnwell::host
