#include "runner/client.h"

#include "frame/exception.h"
#include "frame/messages.h"
#include "frame/status.h"
#include "frame/trim.h"
#include "platform/crash.h"
#include "platform/wide.h"
#include "runner/environment.h"
#include "runner/pipereader.h"

namespace tarnwell
{

namespace
{

constexpr DWORD pipeSize = 10240; // bytes

struct Pipe
{
    OsHandle read;
    OsHandle write;
};

// A pipe of which only the client's end is inheritable. The other never is, not even for a moment:
// a client that held the other end of its own input, or of another client's, would never see it
// end.
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

// A client that was ended before it had printed everything looks like one that had less to print.
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

// A started process, with its first thread's handle.
struct Process
{
    OsHandle process;
    OsHandle thread;

    int WaitForExitCode(int preset) const
    {
        WaitForSingleObject(process.Get(), INFINITE);
        DWORD code = 0;
        return GetExitCodeProcess(process.Get(), &code) ? static_cast<int>(code) : preset;
    }
};

STARTUPINFOW HiddenWith(HANDLE input, HANDLE output, HANDLE errors)
{
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESTDHANDLES | STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_HIDE;
    startup.hStdInput = input;
    startup.hStdOutput = output;
    startup.hStdError = errors;
    return startup;
}

Process StartProcess(const ClientRow& row, const ClientCall& call, STARTUPINFOW startup)
{
    std::u16string commandLine = u"\"" + call.program + u"\" " + call.arguments;
    std::u16string environment = ClientEnvironment(row.hiddenNames);
    const bool isOwn = row.hiddenNames != nullptr || !environment.empty();
    PROCESS_INFORMATION started{};
    if (!CreateProcessW(nullptr, Wide(commandLine.data()), nullptr, nullptr, 1,
                        isOwn ? CREATE_UNICODE_ENVIRONMENT : 0,
                        environment.empty() ? nullptr : environment.data(),
                        call.workingFolder ? Wide(*call.workingFolder) : nullptr, &startup,
                        &started))
    {
        const DWORD error = GetLastError();
        ThrowClientFailure(row, error == ERROR_FILE_NOT_FOUND ? row.notFound : row.communication,
                           error);
    }
    return {OsHandle(started.hProcess), OsHandle(started.hThread)};
}

} // namespace

ClientOutcome RunClient(const ClientRow& row, const ClientCall& call)
{
    ClientOutcome outcome{row.exitCodePreset, {}};
    Pipe input = MakePipe(row, &Pipe::read);
    std::optional<Pipe> output;
    std::optional<PipeReader> outputReader;
    if (call.readOutput)
    {
        output = MakePipe(row, &Pipe::write);
        outputReader.emplace(std::move(output->read), row.decoding, row.bareLineFeed,
                             call.readOutput);
    }
    Pipe errors = MakePipe(row, &Pipe::write);
    PipeReader errorReader(std::move(errors.read), row.decoding, row.bareLineFeed,
                           [&](BufferedReader& text) { outcome.errors = text.ReadAll(); });

    const Process process =
        StartProcess(row, call,
                     HiddenWith(input.read.Get(), output ? output->write.Get() : call.outputFile,
                                errors.write.Get()));
    // Until all have ended nothing throws. The client alone holds its ends now.
    input.write.Close();
    input.read.Close();
    errors.write.Close();
    if (output)
    {
        output->write.Close();
        outputReader->Start();
    }
    errorReader.Start();

    outcome.exitCode = process.WaitForExitCode(outcome.exitCode);
    if (outputReader)
        outputReader->Wait();
    errorReader.Wait();
    if (outputReader)
        outputReader->RethrowFailure();
    errorReader.RethrowFailure();
    ThrowIfCrashed(row, process.process.Get());
    return outcome;
}

void ThrowClientFailure(const ClientRow& row, MessageId message, DWORD error)
{
    const HRESULT status = EnsureFailed(StatusFromError(error));
    throw ComException(status, FormatMessageWithStatus(message, status), At(row.source));
}

void ThrowReportedErrors(const ClientRow& row, const std::u16string& address,
                         const std::u16string& errors)
{
    if (errors.empty())
        return;
    throw ComException(
        E_FAIL, FormatMessageById(row.reportedFailure, {address, std::u16string(Trimmed(errors))}),
        At(row.source));
}

} // namespace tarnwell
