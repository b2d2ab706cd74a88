// FTP through an HTTP proxy.
#include "platform/posix/oddftp.h"
#include "support/ftp/socket.h"

#include <list>

namespace tarnwell::test
{
namespace
{

// Bytes of one side, for as long as it sends some.
void Relay(const Socket& from, const Socket& to, const StopFlag& stop)
{
    for (std::string bytes; !(bytes = from.Receive(65536, stop)).empty();)
    {
        if (!to.Send(bytes, stop))
            return;
    }
    to.EndSending();
}

// Makes tunnels to ports of this machine, or answers each request with a refusal.
class Proxy
{
public:
    explicit Proxy(std::string refusal = "") : refusal_(std::move(refusal)) {}
    Proxy(const Proxy&) = delete;
    Proxy& operator=(const Proxy&) = delete;
    ~Proxy()
    {
        stop_ = true;
        thread_.join();
        for (std::thread& tunnel : tunnels_)
            tunnel.join();
    }

    std::string Address() const
    {
        return "127.0.0.1:" + std::to_string(listener_.Port());
    }
    int Tunnels() const
    {
        return made_;
    }

private:
    void Serve()
    {
        while (Socket client = listener_.Accept(stop_))
            tunnels_.emplace_back([this, client = std::move(client)] { ServeOne(client); });
    }
    void ServeOne(const Socket& client)
    {
        std::string request;
        while (request.find("\r\n\r\n") == std::string::npos)
        {
            const std::string more = client.Receive(4096, stop_);
            if (more.empty())
                return;
            request += more;
        }
        if (!refusal_.empty())
        {
            client.Send(refusal_, stop_);
            return;
        }
        const std::size_t port = request.find("127.0.0.1:");
        if (!request.starts_with("CONNECT ") || port == std::string::npos)
            return;
        const Socket server = Socket::Connected(std::stoi(request.substr(port + 10)));
        ++made_;
        client.Send("HTTP/1.1 200 go on\r\n\r\n", stop_);
        std::thread up([&] { Relay(client, server, stop_); });
        Relay(server, client, stop_);
        up.join();
    }

    const std::string refusal_;
    StopFlag stop_ = false;
    std::atomic<int> made_ = 0;
    const Socket listener_ = Socket::Listening();
    std::list<std::thread> tunnels_;
    std::thread thread_{[this] {
        Serve();
    }};
};

class FtpTunnel : public OddFtp
{
protected:
    // Through `proxy`, past the lists of the settings.
    posix::FtpConnection Through(const Proxy& proxy) const
    {
        posix::FtpServerAddress address = Address();
        address.proxy = proxy.Address();
        return posix::FtpConnection(std::move(address));
    }
};

TEST_F(FtpTunnel, CarriesCommandsAndData)
{
    const Proxy proxy;
    server.WriteFile("/a", "12345");
    posix::FtpConnection connection = Through(proxy);
    ASSERT_EQ(connection.LogIn(), 0U);
    ASSERT_EQ(connection.BeginDownload("a"), 0U);
    char buffer[16];
    std::size_t count = 0;
    ASSERT_EQ(connection.Read(buffer, count), 0U);
    EXPECT_EQ(std::string_view(buffer, count), "12345");
    EXPECT_EQ(connection.EndTransfer(), 0U);
    EXPECT_EQ(proxy.Tunnels(), 2);
}

TEST_F(FtpTunnel, ThatIsRefusedIsNoConnection)
{
    for (const char* const refusal :
         {"HTTP/1.1 403 no\r\nContent-Length: 0\r\n\r\n",
          "HTTP/1.1 407 who are you\r\nProxy-Authenticate: Basic realm=\"x\"\r\n\r\n",
          "HTTP/1.1 502 nobody there\r\n\r\n"})
    {
        const Proxy proxy(refusal);
        EXPECT_EQ(Through(proxy).LogIn(), ERROR_INTERNET_CANNOT_CONNECT) << refusal;
    }
    EXPECT_EQ(server.Connections(), 0);
}

} // namespace
} // namespace tarnwell::test
