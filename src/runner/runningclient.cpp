#include "runner/runningclient.h"

#include "frame/exception.h"
#include "frame/status.h"
#include "platform/clientgroup.h"

#include <cstdint>

namespace tarnwell
{

namespace
{

OsHandle MakeGroup(const ClientRow& row)
{
    OsHandle group(CreateClientGroup());
    if (!group)
        ThrowClientFailure(row, row.communication, GetLastError());
    return group;
}

// The first `most` bytes of what is printed go to `queue`, whose end is told in any case.
OutputReader InTo(ByteQueue& queue, std::uint64_t most, std::atomic<DWORD>& failure, HANDLE group)
{
    return [&queue, most, &failure, group](BufferedReader& output) {
        struct Ending
        {
            ~Ending()
            {
                queue.End();
            }
            ByteQueue& queue;
        } const ending{queue};
        std::uint64_t left = most;
        for (;;)
        {
            const std::string_view block = output.ReadBlock(group);
            failure = output.Failure();
            if (block.empty())
                return;
            const std::string_view kept = block.substr(0, left);
            // Who took leave of the group may go on printing for ever.
            if (!queue.Push(kept))
                return output.Leave();
            left -= kept.size();
            if (left == 0)
                queue.End();
        }
    };
}

constexpr std::uint64_t everything = UINT64_MAX;
// Nobody takes any of it before the end, so that it must not fill its queue.
constexpr std::uint64_t keptErrorText = std::uint64_t{64} * 1024; // bytes

} // namespace

RunningClient::RunningClient(const ClientRow& row, const ClientCall& call)
    : row_(row), group_(MakeGroup(row))
{
    Pipe input = MakePipe(row, &Pipe::read);
    Pipe output = MakePipe(row, &Pipe::write);
    Pipe errors = MakePipe(row, &Pipe::write);
    outputReader_ =
        std::make_unique<PipeReader>(std::move(output.read), row.decoding, row.bareLineFeed,
                                     InTo(output_, everything, outputFailure_, group_.Get()));
    errorReader_ =
        std::make_unique<PipeReader>(std::move(errors.read), row.decoding, row.bareLineFeed,
                                     InTo(errors_, keptErrorText, errorFailure_, group_.Get()));
    client_ =
        StartClient(row, call, {input.read.Get(), output.write.Get(), errors.write.Get()}, group_);
    input.read.Close();
    output.write.Close();
    errors.write.Close();
    input_ = std::move(input.write);
    const bool isRead = outputReader_->Start();
    const DWORD error = isRead ? ERROR_SUCCESS : GetLastError();
    if (isRead && errorReader_->Start())
        return;
    const DWORD failure = isRead ? GetLastError() : error;
    End();
    ThrowClientFailure(row, row.communication, failure);
}

RunningClient::~RunningClient()
{
    End();
}

bool RunningClient::Write(std::string_view bytes)
{
    DWORD written = 0;
    if (WriteFile(input_.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written,
                  nullptr) &&
        written == bytes.size())
        return true;
    const DWORD error = GetLastError();
    if (error != ERROR_BROKEN_PIPE && error != ERROR_NO_DATA)
        ThrowClientFailure(row_, row_.communication, error);
    return false;
}

void RunningClient::CloseInput()
{
    input_.Close();
}

std::string RunningClient::Read(Patience& patience)
{
    return TakeFrom(output_, 1, patience);
}

std::string RunningClient::ReadMuch(Patience& patience)
{
    constexpr std::size_t much = std::size_t{32} * 1024; // bytes
    return TakeFrom(output_, much, patience);
}

ClientOutcome RunningClient::Finish(Patience& patience)
{
    CloseInput();
    while (!Read(patience).empty())
    {
    }
    std::string errors;
    for (std::string block = TakeFrom(errors_, 1, patience); !block.empty();
         block = TakeFrom(errors_, 1, patience))
        errors += block;
    const HANDLE process = client_.process.Get();
    constexpr DWORD pause = Patience::pause.count();
    DWORD waited = WaitForSingleObject(process, pause);
    for (; waited == WAIT_TIMEOUT; waited = WaitForSingleObject(process, pause))
        patience.Ask();
    if (waited != WAIT_OBJECT_0)
        ThrowClientFailure(row_, row_.communication, GetLastError());
    End();
    outputReader_->RethrowFailure();
    errorReader_->RethrowFailure();
    // What couldn't be read must not look like less to say.
    for (const DWORD failure : {outputFailure_.load(), errorFailure_.load()})
    {
        if (failure != ERROR_SUCCESS)
            ThrowClientFailure(row_, row_.communication, failure);
    }
    ThrowIfCrashed(row_, process);
    return {client_.ExitCode(row_.exitCodePreset), Decode(errors, row_.decoding)};
}

// Once the client has ended, all that it has printed is in the pipe. Whoever else has that is left
// a second for words of its own; then the group is ended, and so the pipe, behind what is in it.
std::string RunningClient::TakeFrom(ByteQueue& queue, std::size_t wanted, Patience& patience)
{
    constexpr auto second = std::chrono::milliseconds(1000) / Patience::pause; // pauses
    bool hasEnded = false;
    for (auto silent = 0 * second;;)
    {
        patience.Ask();
        if (std::optional<std::string> bytes = queue.Take(Patience::pause, wanted))
            return std::move(*bytes);
        if (++silent % second != 0)
            continue;
        if (hasEnded)
            EndClientGroup(group_.Get());
        hasEnded = WaitForSingleObject(client_.process.Get(), 0) == WAIT_OBJECT_0;
    }
}

void RunningClient::End() noexcept
{
    input_.Close();
    output_.Stop();
    errors_.Stop();
    EndClientGroup(group_.Get());
    outputReader_->Wait();
    errorReader_->Wait();
    if (client_.process)
        WaitForSingleObject(client_.process.Get(), INFINITE);
}

} // namespace tarnwell
