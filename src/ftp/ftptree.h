// The deletion of a folder with all that is in it.
#pragma once

#include "ftp/ftpsession.h"

namespace tarnwell
{

// Depth first, the files of a folder before the folders in it. What fails ends it, and what is
// deleted by then stays deleted.
void FtpDeleteTree(FTPSession& session, const HostUIUser& host, const Uri& uri);

} // namespace tarnwell
