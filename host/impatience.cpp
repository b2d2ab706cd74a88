#include "impatience.h"

#include "commands.h"
#include "errors.h"
#include "noexcept.h"
#include "system.h"
#include "words.h"

#include <system_error>

namespace tarnwell::host
{

Impatience::Impatience(bool json) : json_(json)
{
    try
    {
        thread_ = std::thread([this] { Watch(); });
    }
    catch (const std::system_error&)
    {
        // Without it Ctrl-C is heard when the command comes to it.
    }
}

Impatience::~Impatience()
{
    {
        // Once the program is being ended, this waits for that.
        const std::lock_guard lock(guard_);
        hasEnded_ = true;
    }
    end_.notify_one();
    if (thread_.joinable())
        thread_.join();
}

void Impatience::Watch()
{
    std::unique_lock lock(guard_);
    const auto endsWithin = [&](std::chrono::milliseconds time) {
        return end_.wait_for(lock, time, [this] { return hasEnded_; });
    };
    while (!InterruptWatch::Interrupted())
    {
        if (endsWithin(lookEvery))
            return;
    }
    if (endsWithin(patience))
        return;
    static_cast<void>(WithoutExceptions([&] {
        if (ErrorsAreTerminal())
            WriteErrors("\r\x1b[K");
        PrintFailure(CopyCancelled(), json_);
        return S_OK;
    }));
    EndProgram(exitFailed);
}

} // namespace tarnwell::host
