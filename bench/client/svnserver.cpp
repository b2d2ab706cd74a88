#include "client/svnserver.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <iterator>
#include <netinet/in.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace tarnwell::bench
{

namespace
{

class Socket
{
public:
    Socket() = default;
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;
    ~Socket()
    {
        close(descriptor_);
    }

    // A free port. Somebody else could take it before the server does; then the server fails.
    int Bind() const
    {
        sockaddr_in address = Local(0);
        socklen_t size = sizeof address;
        bind(descriptor_, reinterpret_cast<sockaddr*>(&address), size);
        getsockname(descriptor_, reinterpret_cast<sockaddr*>(&address), &size);
        return ntohs(address.sin_port);
    }
    bool Connect(int port) const
    {
        const sockaddr_in address = Local(port);
        return connect(descriptor_, reinterpret_cast<const sockaddr*>(&address), sizeof address) ==
               0;
    }

private:
    static sockaddr_in Local(int port)
    {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(static_cast<std::uint16_t>(port));
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        return address;
    }

    int descriptor_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
};

pid_t Start(const std::string& folder, int port)
{
    std::string arguments[] = {"svnserve",
                               "--daemon",
                               "--foreground",
                               "--listen-host=127.0.0.1",
                               "--listen-port=" + std::to_string(port),
                               "--root=" + folder};
    char* pointers[std::size(arguments) + 1] = {};
    for (std::size_t i = 0; i < std::size(arguments); ++i)
        pointers[i] = arguments[i].data();
    pid_t process = -1;
    if (const int error = posix_spawnp(&process, pointers[0], nullptr, nullptr, pointers, environ);
        error != 0)
        throw std::system_error(error, std::generic_category(), "svnserve");
    return process;
}

void WaitForConnections(int port)
{
    using namespace std::chrono_literals;
    for (int i = 0; i < 500; ++i)
    {
        if (Socket().Connect(port))
            return;
        std::this_thread::sleep_for(20ms);
    }
    throw std::system_error(ETIMEDOUT, std::generic_category(), "svnserve");
}

} // namespace

SvnServer::SvnServer(const std::string& folder)
    : port_(Socket().Bind()), process_(Start(folder, port_))
{
    WaitForConnections(port_);
}

SvnServer::~SvnServer()
{
    kill(process_, SIGTERM);
    waitpid(process_, nullptr, 0);
}

std::string SvnServer::Place() const
{
    return "127.0.0.1:" + std::to_string(port_);
}

} // namespace tarnwell::bench
