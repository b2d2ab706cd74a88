// A server program on 127.0.0.1 that a test starts and stops.
#pragma once

#include <string>
#include <sys/types.h>
#include <vector>

namespace tarnwell::test
{

// A port on which nobody listened a moment ago.
int FreePort();

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
