// The user's settings for FTP. They are read afresh for each connection, so that a change needs no
// restart. What is missing or ill-formed counts as not set.
#pragma once

#include <string>

namespace tarnwell
{

struct FtpProxy
{
    bool isUsed = false; // never without servers
    std::u16string servers;
    std::u16string bypass; // hosts that are reached without it
};

FtpProxy ReadFtpProxy();

// Whether the server opens the data connections, which is off unless set.
bool ReadUseActive();

} // namespace tarnwell
