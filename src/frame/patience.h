// The host's wish to go on with a question, asked while a client runs.
#pragma once

#include <tarnwell/host.h>

#include <chrono>

namespace tarnwell
{

class Patience
{
public:
    // Nobody waits longer than this without asking.
    static constexpr std::chrono::milliseconds pause{50};

    // `progress` may be null: then it goes on for ever. `source` names the file system in failures.
    Patience(ICopyProgress* progress, const char16_t* source) : progress_(progress), source_(source)
    {
    }

    // To be called often, on the thread of the host's call. Asks if that wasn't done for a pause;
    // throws message 149, with E_ABORT, if the host doesn't want to go on.
    void Ask();

    // Who is asked; null if nobody is.
    ICopyProgress* Progress() const
    {
        return progress_;
    }

private:
    ICopyProgress* progress_; // the host's, for the time of its call
    const char16_t* source_;
    std::chrono::steady_clock::time_point next_{}; // the first time asks at once
};

} // namespace tarnwell
