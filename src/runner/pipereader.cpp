#include "runner/pipereader.h"

#include <cstdint>

namespace tarnwell
{

PipeReader::PipeReader(OsHandle pipe, Decoding decoding, BareLineFeed bareLineFeed,
                       OutputReader read)
    : pipe_(std::move(pipe)), reader_(pipe_.Get(), decoding, bareLineFeed), read_(std::move(read))
{
}

bool PipeReader::Start()
{
    const std::uintptr_t started = _beginthreadex(nullptr, 0, Run, this, 0, nullptr);
    if (started == 0)
        pipe_.Close();
    else
        thread_ = OsHandle(reinterpret_cast<HANDLE>(started));
    return started != 0;
}

void PipeReader::Wait()
{
    if (!thread_)
        return;
    // Even where the system refuses to wait, the thread must not outlive what it works on.
    if (WaitForSingleObject(thread_.Get(), INFINITE) != WAIT_OBJECT_0)
        hasEnded_.wait(false);
    thread_.Close();
}

void PipeReader::RethrowFailure() const
{
    if (failure_)
        std::rethrow_exception(failure_);
}

unsigned STDMETHODCALLTYPE PipeReader::Run(void* self)
{
    auto* const reader = static_cast<PipeReader*>(self);
    reader->ReadToEnd();
    reader->hasEnded_ = true;
    reader->hasEnded_.notify_all();
    return 0;
}

void PipeReader::ReadToEnd() noexcept
{
    try
    {
        read_(reader_);
        reader_.SkipAll();
    }
    catch (...)
    {
        failure_ = std::current_exception();
    }
    pipe_.Close();
}

} // namespace tarnwell
