// A server program on 127.0.0.1 that a test starts and stops.
#pragma once

#include <memory>
#include <string>
#include <sys/types.h>
#include <vector>

namespace tarnwell::test
{

// A port of 127.0.0.1 on which nobody listens, and which the system gives to nobody else while
// this lives. A server that is told it can have it all the same.
class FreePort
{
public:
    FreePort();

    operator int() const
    {
        return number_;
    }

private:
    std::shared_ptr<const void> held_;
    int number_;
};

// Runs from construction to destruction, with its output dropped; stopped by its process id.
class ServerProcess
{
public:
    // Returns when `port` takes connections. Throws if it never does.
    ServerProcess(const std::vector<std::string>& command, int port);
    ServerProcess(const ServerProcess&) = delete;
    ServerProcess& operator=(const ServerProcess&) = delete;
    ~ServerProcess();

private:
    void Stop() const;

    pid_t process_ = -1;
};

} // namespace tarnwell::test
