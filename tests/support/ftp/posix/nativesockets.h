// What the two platforms call differently of sockets.
#pragma once

#include <arpa/inet.h>
#include <cerrno>
#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace tarnwell::test
{

using NativeSocket = int;
using SocketBytes = std::size_t;
inline constexpr NativeSocket noSocket = -1;
inline constexpr int sendFlags = MSG_NOSIGNAL;

inline void StartSockets() {}

inline NativeSocket NewSocket()
{
    return socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
}

inline void CloseSocket(NativeSocket socket)
{
    close(socket);
}

inline void MakeNonBlocking(NativeSocket socket)
{
    fcntl(socket, F_SETFL, fcntl(socket, F_GETFL) | O_NONBLOCK);
    fcntl(socket, F_SETFD, FD_CLOEXEC);
}

inline bool WouldBlock()
{
    return errno == EAGAIN || errno == EINTR;
}

inline int PollSocket(pollfd* entry, int milliseconds)
{
    return poll(entry, 1, milliseconds);
}

} // namespace tarnwell::test
