#include "platform/child/commands.h"

#include <cstdio>
#include <fcntl.h>
#include <io.h>
#include <windows.h>

namespace tarnwell::test
{
namespace
{

std::string Utf8(const wchar_t* text)
{
    std::string bytes;
    const int size = WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
    bytes.resize(static_cast<std::size_t>(size));
    WideCharToMultiByte(CP_UTF8, 0, text, -1, bytes.data(), size, nullptr, nullptr);
    bytes.pop_back();
    return bytes;
}

// Ends once another process has the streams, which awaits as the command of that name does. The
// code to end with.
int LeaveAnHeir(const std::wstring& started, const wchar_t* told)
{
    wchar_t program[MAX_PATH];
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    std::wstring line =
        L"\"" + std::wstring(program) + L"\" await \"" + started + L"\" \"" + told + L"\"";
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION information;
    if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                        &information))
        return untold;
    while (GetFileAttributesW(started.c_str()) == INVALID_FILE_ATTRIBUTES)
        Sleep(1);
    CloseHandle(information.hThread);
    CloseHandle(information.hProcess);
    return 3;
}

} // namespace
} // namespace tarnwell::test

int wmain(int count, wchar_t** texts, wchar_t** entries)
{
    using namespace tarnwell::test;
    for (FILE* const stream : {stdin, stdout, stderr})
        _setmode(_fileno(stream), _O_BINARY);
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i)
        arguments.push_back(Utf8(texts[i]));
    std::vector<std::string> environment;
    for (; *entries != nullptr; ++entries)
        environment.push_back(Utf8(*entries));
    if (!arguments.empty() && arguments[0] == "kill")
    {
        std::fputs("last words", stderr);
        std::fflush(stderr);
        TerminateProcess(GetCurrentProcess(), 137);
    }
    if (arguments.size() == 3 && arguments[0] == "heir")
        return LeaveAnHeir(texts[2], texts[3]);
    if (!arguments.empty() && arguments[0] == "window")
    {
        STARTUPINFOW startup = {};
        GetStartupInfoW(&startup);
        const bool isTold = (startup.dwFlags & STARTF_USESHOWWINDOW) != 0;
        Print({isTold ? std::to_string(startup.wShowWindow) : "untold"});
        return 0;
    }
    return RunCommand(arguments, environment);
}
