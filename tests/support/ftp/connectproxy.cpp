#include "support/ftp/connectproxy.h"

#include <cstdlib>

namespace tarnwell::test
{

ConnectProxy::ConnectProxy() : listener_(Socket::Listening()), thread_([this] { Serve(); }) {}

ConnectProxy::~ConnectProxy()
{
    stop_ = true;
    thread_.join();
    for (std::thread& visitor : visitors_)
        visitor.join();
}

int ConnectProxy::Port() const
{
    return listener_.Port();
}

void ConnectProxy::Name(const std::string& host, int port)
{
    const std::lock_guard lock(guard_);
    names_[host] = port;
}

void ConnectProxy::Refuse()
{
    const std::lock_guard lock(guard_);
    refuses_ = true;
}

std::vector<std::string> ConnectProxy::Requests() const
{
    const std::lock_guard lock(guard_);
    return requests_;
}

void ConnectProxy::Serve()
{
    while (Socket client = listener_.Accept(stop_))
        visitors_.emplace_back([this, taken = std::move(client)] { Tunnel(taken); });
}

// As in "CONNECT 127.0.0.1:4711 HTTP/1.1".
int ConnectProxy::PortFor(const std::string& request) const
{
    constexpr int usual = 21;
    const std::size_t begin = request.find(' ') + 1;
    const std::size_t colon = request.find(':');
    const int port = std::atoi(request.c_str() + colon + 1);
    const auto named = names_.find(request.substr(begin, colon - begin));
    return named != names_.end() && port == usual ? named->second : port;
}

void ConnectProxy::Tunnel(const Socket& client)
{
    std::string request;
    while (request.find("\r\n\r\n") == std::string::npos)
    {
        // One by one: what follows is the other side's.
        const std::string more = client.Receive(1, stop_);
        if (more.empty())
            return;
        request += more;
    }
    const std::string line = request.substr(0, request.find("\r\n"));
    bool refuses = false;
    int port = 0;
    {
        const std::lock_guard lock(guard_);
        requests_.push_back(line);
        refuses = refuses_;
        port = PortFor(line);
    }
    const Socket server = refuses ? Socket() : Socket::Connected(port);
    if (!server)
    {
        client.Send("HTTP/1.1 403 Forbidden\r\nContent-Length: 0\r\n\r\n", stop_);
        return;
    }
    client.Send("HTTP/1.1 200 Connected\r\n\r\n", stop_);
    std::thread back([&] { Carry(server, client); });
    Carry(client, server);
    back.join();
}

void ConnectProxy::Carry(const Socket& from, const Socket& to) const
{
    constexpr std::size_t piece = 65536;
    for (;;)
    {
        const std::string bytes = from.Receive(piece, stop_);
        if (bytes.empty() || !to.Send(bytes, stop_))
            break;
    }
    to.EndSending();
}

} // namespace tarnwell::test
