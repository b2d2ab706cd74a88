#include "relay/client/connection.h"

#include <stdexcept>
#include <utility>

namespace tarnwell::relay
{

namespace
{

[[noreturn]] void Fail(const char* what)
{
    throw std::runtime_error(std::string(what) + ": error " + std::to_string(WSAGetLastError()));
}

SOCKET NewSocket()
{
    WSADATA data;
    if (WSAStartup(MAKEWORD(2, 2), &data) != 0)
        Fail("no sockets");
    const SOCKET made = socket(AF_INET, SOCK_STREAM, 0);
    if (made == INVALID_SOCKET)
        Fail("no socket");
    return made;
}

} // namespace

Connection::Connection(unsigned short port) : socket_(NewSocket())
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
        Fail("no server");
}

Connection::Connection(Connection&& other) noexcept
    : socket_(std::exchange(other.socket_, INVALID_SOCKET))
{
}

Connection::~Connection()
{
    if (socket_ != INVALID_SOCKET)
        closesocket(socket_);
}

void Connection::SendText(std::string_view text) const
{
    SendNumber(text.size());
    Send(text);
}

void Connection::SendList(const std::vector<std::string>& texts) const
{
    SendNumber(texts.size());
    for (const std::string& text : texts)
        SendText(text);
}

std::string Connection::Receive(std::size_t size) const
{
    std::string bytes(size, '\0');
    for (std::size_t done = 0; done < size;)
    {
        const int count = recv(socket_, bytes.data() + done, static_cast<int>(size - done), 0);
        if (count <= 0)
            Fail("the server hung up");
        done += static_cast<std::size_t>(count);
    }
    return bytes;
}

std::string Connection::ReceiveText() const
{
    std::size_t size = 0;
    for (const char byte : Receive(4))
        size = size << 8 | static_cast<unsigned char>(byte);
    return Receive(size);
}

void Connection::Send(std::string_view bytes) const
{
    while (!bytes.empty())
    {
        const int count = send(socket_, bytes.data(), static_cast<int>(bytes.size()), 0);
        if (count <= 0)
            Fail("the server hung up");
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

void Connection::SendNumber(std::size_t number) const
{
    std::string bytes;
    for (const int shift : {24, 16, 8, 0})
        bytes += static_cast<char>(number >> shift & 0xFF);
    Send(bytes);
}

} // namespace tarnwell::relay
