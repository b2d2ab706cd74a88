// A real Apache for a Subversion repository, with basic authentication.
#pragma once

#include "support/posix/serverprocess.h"
#include "support/svnrepository.h"

namespace tarnwell::test
{

class HttpServer
{
public:
    // Lets in the user "ann" with the password "secret" only, at /r. At /open/ it lets everybody
    // in, and at /forbidden/ nobody.
    explicit HttpServer(const SvnRepository& repository);

    // "127.0.0.1" and the port.
    std::u16string Host() const;

private:
    const TempFolder folder_;
    const FreePort port_;
    const ServerProcess process_;
};

} // namespace tarnwell::test
