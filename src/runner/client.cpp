#include "runner/client.h"

#include "frame/exception.h"
#include "frame/messages.h"
#include "frame/status.h"
#include "frame/trim.h"
#include "runner/clientstart.h"
#include "runner/pipereader.h"

namespace tarnwell
{

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

    const HANDLE outputEnd = output ? output->write.Get() : call.outputFile;
    const ClientProcess client =
        StartClient(row, call, {input.read.Get(), outputEnd, errors.write.Get()});
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

    WaitForSingleObject(client.process.Get(), INFINITE);
    outcome.exitCode = client.ExitCode(outcome.exitCode);
    if (outputReader)
        outputReader->Wait();
    errorReader.Wait();
    if (outputReader)
        outputReader->RethrowFailure();
    errorReader.RethrowFailure();
    ThrowIfCrashed(row, client.process.Get());
    return outcome;
}

void ThrowClientFailure(const ClientRow& row, MessageId message, DWORD error)
{
    const HRESULT status = EnsureFailed(StatusFromError(error));
    const bool isMissing = message == row.notFound && row.missing != S_OK;
    throw ComException(isMissing ? row.missing : status, FormatMessageWithStatus(message, status),
                       At(row.source));
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
