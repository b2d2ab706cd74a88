#include "support/posix/serverprocess.h"

#include <arpa/inet.h>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <netinet/in.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/socket.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace tarnwell::test
{
namespace
{

sockaddr_in Loopback(int port)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

class Socket
{
public:
    Socket() : descriptor_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {}
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;
    ~Socket()
    {
        close(descriptor_);
    }

    bool Connect(int port) const
    {
        const sockaddr_in address = Loopback(port);
        return connect(descriptor_, reinterpret_cast<const sockaddr*>(&address), sizeof address) ==
               0;
    }
    // A port of the system's choice, for servers to share; 0 if there is none.
    int Bind() const
    {
        constexpr int on = 1;
        setsockopt(descriptor_, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
        sockaddr_in address = Loopback(0);
        auto* const plain = reinterpret_cast<sockaddr*>(&address);
        socklen_t size = sizeof address;
        const bool bound =
            bind(descriptor_, plain, size) == 0 && getsockname(descriptor_, plain, &size) == 0;
        return bound ? ntohs(address.sin_port) : 0;
    }

private:
    int descriptor_;
};

pid_t Start(const std::vector<std::string>& command)
{
    std::vector<char*> arguments;
    for (const std::string& argument : command)
        arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    for (const int descriptor : {0, 1, 2})
        posix_spawn_file_actions_addopen(&actions, descriptor, "/dev/null", O_RDWR, 0);
    pid_t process = -1;
    const int error =
        posix_spawnp(&process, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0)
        throw std::runtime_error("can't start " + command[0]);
    return process;
}

bool HasEnded(pid_t process)
{
    return waitpid(process, nullptr, WNOHANG) != 0;
}

} // namespace

FreePort::FreePort()
{
    const auto held = std::make_shared<const Socket>();
    number_ = held->Bind();
    if (number_ == 0)
        throw std::runtime_error("no free port");
    held_ = held;
}

ServerProcess::ServerProcess(const std::vector<std::string>& command, int port)
    : process_(Start(command))
{
    constexpr int tries = 1000;
    constexpr std::chrono::milliseconds pause(10);
    for (int i = 0; i < tries; ++i)
    {
        if (Socket().Connect(port))
            return;
        if (HasEnded(process_))
            throw std::runtime_error(command[0] + " has ended");
        std::this_thread::sleep_for(pause);
    }
    Stop();
    throw std::runtime_error(command[0] + " doesn't listen");
}

ServerProcess::~ServerProcess()
{
    Stop();
}

void ServerProcess::Stop() const
{
    kill(process_, SIGTERM);
    waitpid(process_, nullptr, 0);
}

} // namespace tarnwell::test
