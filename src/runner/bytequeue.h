// Bytes on their way from the thread that reads a pipe to the one that wants them.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

namespace tarnwell
{

class ByteQueue
{
public:
    // The reading thread's. `Push` waits while there is much that nobody took; false once nobody
    // wants more. `End` says that nothing comes any more.
    bool Push(std::string_view bytes);
    void End();

    // The other's. All that is there, after waiting so long for the first of it, and then a moment
    // for so much: each wait for a little costs more than reading it. Nothing if the first wait was
    // in vain. Empty at the end.
    std::optional<std::string> Take(std::chrono::milliseconds patience, std::size_t wanted = 1);
    // No more is wanted.
    void Stop();

private:
    static constexpr std::size_t capacity = std::size_t{1024} * 1024; // in bytes, and one more push

    std::mutex guard_;
    std::condition_variable changed_;
    std::string bytes_;
    std::size_t wanted_ = 1; // in bytes, for which the other is woken up
    bool hasEnded_ = false;
    bool isStopped_ = false;
};

} // namespace tarnwell
