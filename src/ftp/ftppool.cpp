#include "ftp/ftppool.h"

#include "addressed/interfaceimpl.h"

#include <algorithm>
#include <atomic>
#include <iterator>
#include <mutex>
#include <new>
#include <vector>

namespace tarnwell
{

namespace
{

using Locked = std::lock_guard<CriticalSection>;

// Both times are cut down to seconds first. A clock that was set back makes everything old.
bool IsTooOld(std::uint64_t since, std::uint64_t now)
{
    constexpr std::uint64_t ticksPerSecond = 10'000'000;
    constexpr std::uint64_t longestWait = 60; // seconds
    return now / ticksPerSecond - since / ticksPerSecond > longestWait;
}

constinit std::atomic<ConnectionPool*> thePool{nullptr};

} // namespace

ConnectionPool::ConnectionPool()
{
    ThrowIfNotMade(lock_.Initialize());
}

std::unique_ptr<FTPSession> ConnectionPool::Acquire(const ConnectionKey& key, std::uint64_t now)
{
    Prune(now);
    {
        const Locked locked(lock_);
        const auto found = idle_.find(key);
        if (found != idle_.end() && !found->second.empty())
        {
            std::unique_ptr<FTPSession> session = std::move(found->second.front().session);
            found->second.pop_front();
            return session;
        }
    }
    return std::make_unique<FTPSession>(key);
}

void ConnectionPool::Release(std::unique_ptr<FTPSession> session, std::uint64_t now) noexcept
try
{
    const Locked locked(lock_);
    std::deque<Idle>& waiting = idle_[session->Key()];
    waiting.push_back({std::move(session), now});
}
catch (const std::bad_alloc&)
{
    // Gone with the argument.
}

void ConnectionPool::Prune(std::uint64_t now)
{
    std::vector<Idle> old; // closed when the lock is free again
    const Locked locked(lock_);
    for (auto& [key, waiting] : idle_)
    {
        const auto firstOld =
            std::stable_partition(waiting.begin(), waiting.end(),
                                  [now](const Idle& idle) { return !IsTooOld(idle.since, now); });
        std::move(firstOld, waiting.end(), std::back_inserter(old));
        waiting.erase(firstOld, waiting.end());
    }
}

void ConnectionPool::Clear() noexcept
{
    decltype(idle_) closed; // when the lock is free again
    const Locked locked(lock_);
    closed.swap(idle_);
}

ConnectionPool& TheConnectionPool()
{
    static ConnectionPool* const made = thePool = new ConnectionPool;
    return *made;
}

void CloseIdleConnections() noexcept
{
    if (ConnectionPool* const pool = thePool)
        pool->Clear();
}

} // namespace tarnwell
