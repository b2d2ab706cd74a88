// The thread that reads one pipe of a client while the client runs.
#pragma once

#include "frame/handle.h"
#include "runner/bufferedreader.h"

#include <atomic>
#include <exception>

namespace tarnwell
{

// Made before the client, so that nothing has to be allocated while it runs.
class PipeReader
{
public:
    // Owns `pipe`, the read end. `read` is called on the thread, which must not touch an object of
    // the host's.
    PipeReader(OsHandle pipe, Decoding decoding, BareLineFeed bareLineFeed, OutputReader read);
    PipeReader(const PipeReader&) = delete;
    PipeReader& operator=(const PipeReader&) = delete;

    // Starts the thread, which calls `read`, drops what that leaves, and closes the pipe. If the
    // system has no thread to give, the pipe is closed at once and nothing is read. Either way the
    // client never waits for a reader that is gone. Whether there is
    // a thread.
    bool Start();

    // Waits without a time limit for a thread that was started. Only after this can the caller use
    // what `read` has done.
    void Wait();

    // Throws what `read` has thrown.
    void RethrowFailure() const;

private:
    static unsigned STDMETHODCALLTYPE Run(void* self);
    void ReadToEnd() noexcept;

    OsHandle pipe_;
    BufferedReader reader_;
    OutputReader read_;
    std::exception_ptr failure_;
    OsHandle thread_;
    std::atomic<bool> hasEnded_ = false;
};

} // namespace tarnwell
