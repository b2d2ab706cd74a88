// The end of a cancelled command that doesn't come to its own end.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace tarnwell::host
{

// While one of these lives, beside an InterruptWatch, Ctrl-C is obeyed whatever the command waits
// for, such as a server that takes nothing more: if it hasn't ended a little later, the program
// ends as one whose copy was cancelled. Connections end with it. Not for what a cancelled command
// would have to clear away.
class Impatience
{
public:
    explicit Impatience(bool json);
    Impatience(const Impatience&) = delete;
    Impatience& operator=(const Impatience&) = delete;
    ~Impatience();

private:
    void Watch();

    static constexpr std::chrono::milliseconds lookEvery{50};
    static constexpr std::chrono::milliseconds patience{1000};

    const bool json_;
    std::mutex guard_;
    std::condition_variable end_;
    bool hasEnded_ = false;
    std::thread thread_;
};

} // namespace tarnwell::host
