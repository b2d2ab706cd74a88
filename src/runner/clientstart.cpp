#include "runner/clientstart.h"

#include "frame/exception.h"
#include "frame/messages.h"
#include "frame/status.h"
#include "platform/clientgroup.h"
#include "platform/crash.h"
#include "platform/wide.h"
#include "runner/environment.h"

namespace tarnwell
{

namespace
{

constexpr DWORD pipeSize = 10240; // bytes

STARTUPINFOW HiddenWith(const ClientStreams& streams)
{
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESTDHANDLES | STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_HIDE;
    startup.hStdInput = streams.input;
    startup.hStdOutput = streams.output;
    startup.hStdError = streams.errors;
    return startup;
}

} // namespace

Pipe MakePipe(const ClientRow& row, OsHandle Pipe::*clientEnd)
{
    HANDLE read = INVALID_HANDLE_VALUE;
    HANDLE write = INVALID_HANDLE_VALUE;
    if (!CreatePipe(&read, &write, nullptr, pipeSize))
        ThrowClientFailure(row, row.communication, GetLastError());
    Pipe pipe{OsHandle(read), OsHandle(write)};
    if (!SetHandleInformation((pipe.*clientEnd).Get(), HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT))
        ThrowClientFailure(row, row.communication, GetLastError());
    return pipe;
}

int ClientProcess::ExitCode(int preset) const
{
    DWORD code = 0;
    return GetExitCodeProcess(process.Get(), &code) ? static_cast<int>(code) : preset;
}

ClientProcess StartClient(const ClientRow& row, const ClientCall& call,
                          const ClientStreams& streams, const OsHandle& group)
{
    std::u16string commandLine = u"\"" + call.program + u"\" " + call.arguments;
    std::vector<const char16_t*> variables(row.variables.begin(), row.variables.end());
    for (const std::u16string& variable : call.variables)
        variables.push_back(variable.c_str());
    std::u16string environment = ClientEnvironment(row.hiddenNames, variables);
    // Without what it is to have it would be another client.
    if (!variables.empty() && environment.empty())
        ThrowClientFailure(row, row.communication, GetLastError());
    const bool isOwn = row.hiddenNames != nullptr || !environment.empty();
    WCHAR* const line = Wide(commandLine.data());
    void* const block = environment.empty() ? nullptr : environment.data();
    const WCHAR* const folder = call.workingFolder ? Wide(*call.workingFolder) : nullptr;
    STARTUPINFOW startup = HiddenWith(streams);
    PROCESS_INFORMATION started{};
    const BOOL isStarted = group
                               ? StartInGroup(group.Get(), line, block, folder, &startup, &started)
                               : CreateProcessW(nullptr, line, nullptr, nullptr, 1,
                                                isOwn ? CREATE_UNICODE_ENVIRONMENT : 0, block,
                                                folder, &startup, &started);
    if (!isStarted)
    {
        const DWORD error = GetLastError();
        ThrowClientFailure(row, error == ERROR_FILE_NOT_FOUND ? row.notFound : row.communication,
                           error);
    }
    return {OsHandle(started.hProcess), OsHandle(started.hThread)};
}

void ThrowIfCrashed(const ClientRow& row, HANDLE process)
{
    const std::optional<std::u16string> words = CrashOf(process);
    if (!words)
        return;
    constexpr DWORD error = ERROR_PROCESS_ABORTED;
    if (words->empty())
        ThrowClientFailure(row, row.communication, error);
    const std::u16string message = FormatMessageById(row.communication);
    throw ComException(StatusFromError(error),
                       FormatMessageById(MessageId::MessageWithStatus, {message, *words}),
                       At(row.source));
}

} // namespace tarnwell
