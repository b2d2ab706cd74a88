// The way to the server.
#pragma once

#include <winsock2.h>

#include <string>
#include <string_view>
#include <vector>

namespace tarnwell::relay
{

// All of it throws with a text if it can't be done.
class Connection
{
public:
    // To a port of this machine.
    explicit Connection(unsigned short port);
    Connection(Connection&& other) noexcept;
    Connection& operator=(Connection&&) = delete;
    ~Connection();

    void SendText(std::string_view text) const;
    void SendList(const std::vector<std::string>& texts) const;

    // Of this size exactly.
    std::string Receive(std::size_t size) const;
    std::string ReceiveText() const;

private:
    void Send(std::string_view bytes) const;
    void SendNumber(std::size_t number) const;

    SOCKET socket_ = INVALID_SOCKET;
};

} // namespace tarnwell::relay
