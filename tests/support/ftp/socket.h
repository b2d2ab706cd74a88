// A socket on 127.0.0.1, for servers that run in a thread of the test.
#pragma once

#include <atomic>
#include <cstdint>
#include <string>
#include <string_view>

namespace tarnwell::test
{

// Set when the threads of a server are to come to their end; every wait looks at it.
using StopFlag = std::atomic<bool>;

// Owns one, or nothing.
class Socket
{
public:
    Socket() = default;
    Socket(Socket&& other) noexcept;
    Socket& operator=(Socket&& other) noexcept;
    ~Socket();

    // On a free port. Throws if there is none.
    static Socket Listening();
    static Socket Connected(int port);

    int Port() const;
    explicit operator bool() const;

    // Nothing if `stop` is set before anybody comes.
    Socket Accept(const StopFlag& stop) const;
    // Whether all went out.
    bool Send(std::string_view bytes, const StopFlag& stop) const;
    // At least one byte and at most `size`; none at the end, or if `stop` is set before.
    std::string Receive(std::size_t size, const StopFlag& stop) const;
    // No more is sent; the other side sees the end.
    void EndSending() const;
    // Closes it so that the other side sees no end but a broken connection.
    void Break();

private:
    explicit Socket(std::intptr_t native);
    bool Wait(short events, const StopFlag& stop) const;

    static constexpr std::intptr_t none = -1;
    std::intptr_t native_ = none;
};

} // namespace tarnwell::test
