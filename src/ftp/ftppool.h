// Sessions that wait for their next use, since logging on is slow.
#pragma once

#include "frame/criticalsection.h"
#include "ftp/ftpsession.h"

#include <deque>
#include <map>
#include <memory>

namespace tarnwell
{

// Times are FILETIME values. A session that is in use is in no pool.
class ConnectionPool
{
public:
    // Throws if there is no lock to be had.
    ConnectionPool();
    ConnectionPool(const ConnectionPool&) = delete;
    ConnectionPool& operator=(const ConnectionPool&) = delete;

    // The session of `key` that has waited longest, else a new one, which isn't connected yet.
    // Before that, what has waited too long goes, whatever its key.
    std::unique_ptr<FTPSession> Acquire(const ConnectionKey& key, std::uint64_t now);

    // Keeps `session` for its next use; closes it if there is no memory for that.
    void Release(std::unique_ptr<FTPSession> session, std::uint64_t now) noexcept;

    // Closes all sessions that have waited for more than 60 seconds.
    void Prune(std::uint64_t now);

    // Closes all that wait.
    void Clear() noexcept;

private:
    struct Idle
    {
        std::unique_ptr<FTPSession> session;
        std::uint64_t since;
    };

    // Keys stay when their last session goes.
    std::map<ConnectionKey, std::deque<Idle>> idle_;
    CriticalSection lock_;
};

// The process's only one, made at its first use. It isn't destroyed at the end of the process, when
// nobody knows which threads are still at work: the system cuts the connections.
ConnectionPool& TheConnectionPool();

// Closes what waits in it, if there is one.
void CloseIdleConnections() noexcept;

} // namespace tarnwell
