#include "support/ftp/socket.h"

#include <nativesockets.h>

#include <stdexcept>
#include <utility>

namespace tarnwell::test
{
namespace
{

sockaddr_in LoopbackAddress(int port)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

NativeSocket Native(std::intptr_t value)
{
    return static_cast<NativeSocket>(value);
}

std::intptr_t Made()
{
    StartSockets();
    const NativeSocket made = NewSocket();
    if (made == noSocket)
        throw std::runtime_error("no socket");
    return static_cast<std::intptr_t>(made);
}

} // namespace

Socket::Socket(std::intptr_t native) : native_(native) {}

Socket::Socket(Socket&& other) noexcept : native_(std::exchange(other.native_, none)) {}

Socket& Socket::operator=(Socket&& other) noexcept
{
    std::swap(native_, other.native_);
    return *this;
}

Socket::~Socket()
{
    if (native_ != none)
        CloseSocket(Native(native_));
}

Socket Socket::Listening()
{
    Socket socket(Made());
    const sockaddr_in address = LoopbackAddress(0);
    constexpr int waiting = 64;
    if (bind(Native(socket.native_), reinterpret_cast<const sockaddr*>(&address), sizeof address) !=
            0 ||
        listen(Native(socket.native_), waiting) != 0)
        throw std::runtime_error("can't listen");
    MakeNonBlocking(Native(socket.native_));
    return socket;
}

Socket Socket::Connected(int port)
{
    Socket socket(Made());
    const sockaddr_in address = LoopbackAddress(port);
    if (connect(Native(socket.native_), reinterpret_cast<const sockaddr*>(&address),
                sizeof address) != 0)
        return {};
    MakeNonBlocking(Native(socket.native_));
    return socket;
}

int Socket::Port() const
{
    sockaddr_in address{};
    socklen_t size = sizeof address;
    getsockname(Native(native_), reinterpret_cast<sockaddr*>(&address), &size);
    return ntohs(address.sin_port);
}

Socket::operator bool() const
{
    return native_ != none;
}

bool Socket::Wait(short events, const StopFlag& stop) const
{
    constexpr int slice = 20;
    while (!stop)
    {
        pollfd entry{};
        entry.fd = Native(native_);
        entry.events = events;
        if (PollSocket(&entry, slice) > 0)
            return true;
    }
    return false;
}

Socket Socket::Accept(const StopFlag& stop) const
{
    while (Wait(POLLIN, stop))
    {
        const NativeSocket taken = accept(Native(native_), nullptr, nullptr);
        if (taken != noSocket)
        {
            MakeNonBlocking(taken);
            return Socket(static_cast<std::intptr_t>(taken));
        }
        if (!WouldBlock())
            return {};
    }
    return {};
}

bool Socket::Send(std::string_view bytes, const StopFlag& stop) const
{
    constexpr std::size_t piece = 65536;
    while (!bytes.empty())
    {
        const auto sent = send(Native(native_), bytes.data(),
                               static_cast<SocketBytes>(std::min(bytes.size(), piece)), sendFlags);
        if (sent > 0)
            bytes.remove_prefix(static_cast<std::size_t>(sent));
        else if (!WouldBlock() || !Wait(POLLOUT, stop))
            return false;
    }
    return true;
}

std::string Socket::Receive(std::size_t size, const StopFlag& stop) const
{
    std::string bytes(size, '\0');
    while (Wait(POLLIN, stop))
    {
        const auto got = recv(Native(native_), bytes.data(), static_cast<SocketBytes>(size), 0);
        if (got < 0 && WouldBlock())
            continue;
        bytes.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
        return bytes;
    }
    return {};
}

void Socket::EndSending() const
{
    constexpr int sending = 1;
    shutdown(Native(native_), sending);
}

void Socket::Break()
{
    linger now{};
    now.l_onoff = 1;
    setsockopt(Native(native_), SOL_SOCKET, SO_LINGER, reinterpret_cast<const char*>(&now),
               sizeof now);
    CloseSocket(Native(std::exchange(native_, none)));
}

} // namespace tarnwell::test
