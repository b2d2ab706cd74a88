// A real svnserve for a repository.
#pragma once

#include "support/posix/serverprocess.h"
#include "support/svnrepository.h"

namespace tarnwell::test
{

class SvnServe
{
public:
    // Lets in the user "ann" with the password, and, by `anonymous` ("none" or "read"),
    // those without a name.
    SvnServe(const SvnRepository& repository, const std::string& anonymous,
             const std::string& password = "secret");

    // "127.0.0.1" and the port.
    std::u16string Host() const;

private:
    const FreePort port_;
    const ServerProcess process_;
};

} // namespace tarnwell::test
