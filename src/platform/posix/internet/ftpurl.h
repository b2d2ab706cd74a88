// Where FTP servers are, and how libcurl is told.
#pragma once

#include <string>
#include <string_view>

namespace tarnwell::posix
{

struct FtpServerAddress
{
    std::string host;
    unsigned port = 21;
    // Empty: the anonymous one.
    std::string user = {};
    std::string password = {};
    // We open the data connections, and not the server.
    bool isPassive = true;
    // "host:port" of an HTTP proxy, or empty.
    std::string proxy = {};
};

// Of a path as the server is to get it: from the login folder on, or with a "/" in front.
std::string FtpUrl(const FtpServerAddress& address, std::string_view path);

} // namespace tarnwell::posix
