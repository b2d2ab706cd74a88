#include "runner/bytequeue.h"

#include <algorithm>
#include <utility>

namespace tarnwell
{

bool ByteQueue::Push(std::string_view bytes)
{
    std::unique_lock lock(guard_);
    changed_.wait(lock, [&] { return bytes_.size() < capacity || isStopped_; });
    if (isStopped_)
        return false;
    bytes_ += bytes;
    if (bytes_.size() >= wanted_)
        changed_.notify_all();
    return true;
}

void ByteQueue::End()
{
    const std::lock_guard lock(guard_);
    hasEnded_ = true;
    changed_.notify_all();
}

std::optional<std::string> ByteQueue::Take(std::chrono::milliseconds patience, std::size_t wanted)
{
    constexpr std::chrono::milliseconds moment{1};
    std::unique_lock lock(guard_);
    wanted_ = 1;
    if (!changed_.wait_for(lock, patience, [&] { return !bytes_.empty() || hasEnded_; }))
        return std::nullopt;
    wanted_ = std::min(wanted, capacity);
    changed_.wait_for(lock, moment, [&] { return bytes_.size() >= wanted_ || hasEnded_; });
    // Who waits for room.
    if (bytes_.size() >= capacity)
        changed_.notify_all();
    return std::exchange(bytes_, {});
}

void ByteQueue::Stop()
{
    const std::lock_guard lock(guard_);
    isStopped_ = true;
    changed_.notify_all();
}

} // namespace tarnwell
