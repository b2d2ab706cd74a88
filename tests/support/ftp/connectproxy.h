// A proxy in threads of the test, on 127.0.0.1, which makes tunnels to other ports there.
#pragma once

#include "support/ftp/socket.h"

#include <list>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace tarnwell::test
{

class ConnectProxy
{
public:
    ConnectProxy();
    ConnectProxy(const ConnectProxy&) = delete;
    ConnectProxy& operator=(const ConnectProxy&) = delete;
    // Cuts whatever still stands.
    ~ConnectProxy();

    int Port() const;
    // A name that only the proxy knows: its usual port for commands is this one, its others are as
    // they are.
    void Name(const std::string& host, int port);
    // From now on nobody gets a tunnel.
    void Refuse();
    // The first lines of what was asked for, in order.
    std::vector<std::string> Requests() const;

private:
    void Serve();
    void Tunnel(const Socket& client);
    int PortFor(const std::string& request) const;
    void Carry(const Socket& from, const Socket& to) const;

    mutable std::mutex guard_;
    std::vector<std::string> requests_;
    std::map<std::string, int> names_;
    bool refuses_ = false;

    StopFlag stop_ = false;
    Socket listener_;
    std::list<std::thread> visitors_;
    std::thread thread_;
};

} // namespace tarnwell::test
