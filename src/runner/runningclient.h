// A client that is spoken to while it runs, and that can be ended.
#pragma once

#include "frame/patience.h"
#include "runner/bytequeue.h"
#include "runner/clientstart.h"
#include "runner/pipereader.h"

#include <atomic>
#include <memory>
#include <string>
#include <string_view>

namespace tarnwell
{

// Used by one thread at a time. What fails here throws; the client is then to be given up.
class RunningClient
{
public:
    // Starts it. Its files in `call` aren't used: it has pipes for all three streams.
    RunningClient(const ClientRow& row, const ClientCall& call);
    RunningClient(const RunningClient&) = delete;
    RunningClient& operator=(const RunningClient&) = delete;
    // Ends the client if it still runs, with all that it has started.
    ~RunningClient();

    // To its input. Meant for little at a time, as a client that takes nothing holds us up. False
    // if it has ended: then there is no answer, either.
    bool Write(std::string_view bytes);
    void CloseInput();

    // What it prints, as it comes; empty at the end. Asks `patience` while it waits.
    std::string Read(Patience& patience);
    // The same for much of it, which comes in larger pieces, a moment later.
    std::string ReadMuch(Patience& patience);

    // Waits until it has ended by itself, and drops what it still prints; nobody waits for what it
    // has started. Throws if it crashed. Of a very long error text only the beginning is kept.
    ClientOutcome Finish(Patience& patience);

private:
    std::string TakeFrom(ByteQueue& queue, std::size_t wanted, Patience& patience);
    void End() noexcept;

    const ClientRow& row_;
    ByteQueue output_;
    ByteQueue errors_;
    std::atomic<DWORD> outputFailure_ = ERROR_SUCCESS; // of reading them
    std::atomic<DWORD> errorFailure_ = ERROR_SUCCESS;
    OsHandle group_;
    OsHandle input_;
    std::unique_ptr<PipeReader> outputReader_;
    std::unique_ptr<PipeReader> errorReader_;
    ClientProcess client_;
};

} // namespace tarnwell
