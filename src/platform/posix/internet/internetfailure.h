// How an operation of the platform's internet functions fails, inside.
#pragma once

#include "platform/posix/internet/ftpconnection.h"

namespace tarnwell::posix
{

// Thrown, and caught where the operation ends.
struct InternetFailure
{
    DWORD code;
    // The server's words, if it was the server that said no.
    FtpReply reply = {};
};

inline void Check(bool isFine, DWORD code)
{
    if (!isFine)
        throw InternetFailure{code};
}

// `code` is what an operation of `ftp` gave.
inline void Check(DWORD code, const FtpConnection& ftp)
{
    if (code != 0)
        throw InternetFailure{code, ftp.Reply().IsRefusal() ? ftp.Reply() : FtpReply()};
}

} // namespace tarnwell::posix
