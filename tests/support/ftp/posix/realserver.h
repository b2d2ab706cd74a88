// A real FTP server on 127.0.0.1, for the user "ftp" with the password "secret".
#pragma once

#include "support/posix/serverprocess.h"
#include "support/tempfolder.h"

#include <iosfwd>
#include <memory>

namespace tarnwell::test
{

enum class FtpServerKind
{
    Vsftpd,
    Proftpd,
    Pyftpdlib,
};

// Those that can be confined here to the test's folder: what a test asks of a server, such as to
// delete a tree, must never reach anything else. For that two of them need root.
std::vector<FtpServerKind> ConfinedFtpServers();
inline const std::vector<FtpServerKind> allFtpServers = ConfinedFtpServers();

// Their names, as tests are named after them.
void PrintTo(FtpServerKind kind, std::ostream* out);

class RealFtpServer
{
public:
    // Throws if it can't be started, or not be confined: ./test gets all three.
    explicit RealFtpServer(FtpServerKind kind);

    int Port() const;
    // "127.0.0.1" and the port.
    std::u16string Host() const;
    // The login folder, which is empty at first.
    const std::filesystem::path& Folder() const;
    // Successful ones, by the server's own log.
    int Logins() const;

private:
    const FtpServerKind kind_;
    const TempFolder folder_;
    const std::filesystem::path root_;
    const FreePort port_;
    std::unique_ptr<const ServerProcess> process_;
};

} // namespace tarnwell::test
