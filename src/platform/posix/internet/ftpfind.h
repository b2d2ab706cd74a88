// Finds on FTP servers: what was listed, as the platform's records.
#pragma once

#include "platform/posix/internet/ftpconnection.h"

#include <string>
#include <vector>

namespace tarnwell::posix
{

class FtpFind
{
public:
    // Asks the server. "*" as the last component means all that is in the folder; any other path
    // is that of the one entry itself. Throws InternetFailure.
    FtpFind(FtpConnection& ftp, const std::string& pattern);

    // False if there is no other. A name that a record has no room for is passed over.
    bool Next(WIN32_FIND_DATAW& record);

private:
    std::vector<ListedEntry> entries_;
    std::size_t next_ = 0;
};

} // namespace tarnwell::posix
