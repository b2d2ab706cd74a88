// The two handles that all work on a server goes through.
#pragma once

#include "frame/handle.h"

#include <cstdint>
#include <string>

namespace tarnwell
{

// What a connection is opened with.
struct FtpLogon
{
    std::u16string host;
    std::uint16_t port; // noPort is the usual one
    std::u16string user;
    std::u16string password;
};

// The root handle, which holds the user's settings for proxies. Both fail with the server's words,
// if it said something.
InternetHandle OpenInternetHandle();

// A connection that is logged on. To be closed before `root`.
InternetHandle ConnectInternetHandle(const InternetHandle& root, const FtpLogon& logon);

} // namespace tarnwell
