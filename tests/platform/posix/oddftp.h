// FTP with servers that are slow of mind, broken or hostile.
#pragma once

#include "platform/ftp.h"
#include "platform/posix/internet/ftpconnection.h"
#include "support/ftp/scriptedserver.h"

#include <gmock/gmock.h>

namespace tarnwell::test
{

class OddFtp : public testing::Test
{
protected:
    // One that doesn't wait long, past the names of the platform.
    posix::FtpConnection Direct() const
    {
        constexpr posix::FtpPatience impatient{.connecting = std::chrono::milliseconds(2000),
                                               .reply = std::chrono::seconds(1),
                                               .data = std::chrono::milliseconds(100)};
        return posix::FtpConnection(Address(), impatient);
    }
    posix::FtpServerAddress Address() const
    {
        return {.host = "127.0.0.1",
                .port = static_cast<unsigned>(server.Port()),
                .user = "ftp",
                .password = "secret"};
    }

    ScriptedFtpServer server;
};

} // namespace tarnwell::test
