// One connection to a server, which carries one operation at a time. Whoever holds the session uses
// it alone.
#pragma once

#include "addressed/uri.h"
#include "frame/hostuser.h"
#include "ftp/ftpconnection.h"

#include <compare>
#include <cstdint>
#include <string>

namespace tarnwell
{

// What makes sessions interchangeable. Everything is compared as it is written.
struct ConnectionKey
{
    std::u16string user;
    std::u16string password;
    std::u16string host;
    std::uint16_t port = noPort;

    // NOLINTNEXTLINE(modernize-use-nullptr): the zero is the compiler's
    std::strong_ordering operator<=>(const ConnectionKey&) const = default;
};

ConnectionKey ConnectionKeyOf(const Uri& uri);

class FTPSession
{
public:
    explicit FTPSession(ConnectionKey key) : key_(std::move(key)) {}
    FTPSession(const FTPSession&) = delete;
    FTPSession& operator=(const FTPSession&) = delete;
    ~FTPSession()
    {
        ResetHandles();
    }

    const ConnectionKey& Key() const
    {
        return key_;
    }

    // The connection. At the first call, and after a reset, this logs on: `host` gives the
    // credentials that the address lacks, and is told of refused ones.
    HINTERNET Connection(const HostUIUser& host);
    // Closes the connection, if there is one, and never waits for the server.
    void ResetHandles();

private:
    void Connect(const HostUIUser& host);

    const ConnectionKey key_;
    InternetHandle internet_;
    InternetHandle connection_;
};

} // namespace tarnwell
