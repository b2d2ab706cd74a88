// What the two platforms call differently of sockets.
#pragma once

#include <winsock2.h>
#include <ws2tcpip.h>

namespace tarnwell::test
{

using NativeSocket = SOCKET;
using SocketBytes = int;
inline constexpr NativeSocket noSocket = INVALID_SOCKET;
inline constexpr int sendFlags = 0;

inline void StartSockets()
{
    WSADATA data;
    WSAStartup(MAKEWORD(2, 2), &data);
}

inline NativeSocket NewSocket()
{
    return socket(AF_INET, SOCK_STREAM, 0);
}

inline void CloseSocket(NativeSocket socket)
{
    closesocket(socket);
}

inline void MakeNonBlocking(NativeSocket socket)
{
    u_long on = 1;
    ioctlsocket(socket, FIONBIO, &on);
}

inline bool WouldBlock()
{
    return WSAGetLastError() == WSAEWOULDBLOCK;
}

inline int PollSocket(pollfd* entry, int milliseconds)
{
    return WSAPoll(entry, 1, milliseconds);
}

} // namespace tarnwell::test
