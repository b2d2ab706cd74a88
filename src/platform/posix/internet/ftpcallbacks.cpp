// What libcurl calls back. Nothing may be thrown through it.
#include "platform/posix/internet/ftpconnection.h"

#include <algorithm>
#include <new>
#include <sys/socket.h>
#include <unistd.h>

namespace tarnwell::posix
{

// Whether the server has said something that nobody has asked it for yet.
bool FtpConnection::HasNews() const
{
    char unit = 0;
    return !sockets_.empty() &&
           recv(sockets_.front(), &unit, sizeof unit, MSG_PEEK | MSG_DONTWAIT) >= 0;
}

std::size_t FtpConnection::OnReply(char* bytes, std::size_t, std::size_t count, void* self)
{
    FtpConnection& connection = *static_cast<FtpConnection*>(self);
    ++connection.progress_;
    try
    {
        if (connection.replies_.Take({bytes, count}))
            return count;
        connection.givenUp_ = ERROR_INTERNET_CONNECTION_RESET;
    }
    catch (const std::bad_alloc&)
    {
        connection.givenUp_ = ERROR_NOT_ENOUGH_MEMORY;
    }
    for (const curl_socket_t socket : connection.sockets_)
        shutdown(socket, SHUT_RDWR);
    return 0;
}

std::size_t FtpConnection::OnData(char* bytes, std::size_t, std::size_t count, void* self)
{
    FtpConnection& connection = *static_cast<FtpConnection*>(self);
    try
    {
        return connection.TakeData({bytes, count});
    }
    catch (const std::bad_alloc&)
    {
        connection.givenUp_ = ERROR_NOT_ENOUGH_MEMORY;
        return 0;
    }
}

std::size_t FtpConnection::TakeData(std::string_view bytes)
{
    if (listing_ != nullptr)
    {
        ++progress_;
        if (listing_->Take(bytes))
            return bytes.size();
        givenUp_ = ERROR_NOT_ENOUGH_MEMORY;
        return 0;
    }
    // Nothing is taken before somebody reads. Then a piece is taken to its end, as the library
    // copies what it keeps at each resumption.
    if (!isReading_ || rest_.size() >= std::size_t{pieceSize})
    {
        isPaused_ = true;
        return CURL_WRITEFUNC_PAUSE;
    }
    ++progress_;
    const std::size_t fitting = std::min(bytes.size(), room_.size());
    std::copy_n(bytes.data(), fitting, room_.data());
    room_ = room_.subspan(fitting);
    rest_ += bytes.substr(fitting);
    return bytes.size();
}

std::size_t FtpConnection::OnWanted(char* bytes, std::size_t, std::size_t count, void* self)
{
    return static_cast<FtpConnection*>(self)->GiveData({bytes, count});
}

std::size_t FtpConnection::GiveData(std::span<char> room)
{
    // A server that speaks before the end has stopped listening: its word is read by ending.
    if (isAtEnd_ || HasNews())
        return 0;
    if (toSend_.empty())
    {
        isPaused_ = true;
        return CURL_READFUNC_PAUSE;
    }
    ++progress_;
    const std::size_t size = std::min(room.size(), toSend_.size());
    std::copy_n(toSend_.data(), size, room.data());
    toSend_ = toSend_.subspan(size);
    return size;
}

curl_socket_t FtpConnection::OnOpen(void* self, curlsocktype, curl_sockaddr* address)
{
    FtpConnection& connection = *static_cast<FtpConnection*>(self);
    std::vector<curl_socket_t>& sockets = connection.sockets_;
    connection.hasConnected_ = connection.hasConnected_ || sockets.empty();
    const curl_socket_t made =
        socket(address->family, address->socktype | SOCK_CLOEXEC, address->protocol);
    if (made == -1)
        return CURL_SOCKET_BAD;
    try
    {
        sockets.push_back(made);
        return made;
    }
    catch (const std::bad_alloc&)
    {
        close(made);
        return CURL_SOCKET_BAD;
    }
}

int FtpConnection::OnClose(void* self, curl_socket_t socket)
{
    std::erase(static_cast<FtpConnection*>(self)->sockets_, socket);
    return close(socket);
}

} // namespace tarnwell::posix
