// The Subversion file system on real repositories.
#pragma once

#include "module/systemtest.h"
#include "support/clients.h"
#include "support/environmentvalue.h"
#include "support/svnrepository.h"

namespace tarnwell::test
{

class SvnTest : public SystemTest
{
protected:
    SvnTest() : SystemTest(CLSID_SVNFileSystem, WhyNoClients()) {}

private:
    // The client keeps what it was told by servers.
    const TempFolder home_;
    const EnvironmentValue homeVariable_{"HOME", home_.Path().string().c_str()};
};

// Message 153 or 159 for `address` and the client's words, as far as they are given.
inline std::u16string AccessFailed(const std::u16string& address, const std::u16string& words)
{
    return u"An error occurred while accessing \"" + address + u"\"\n\n" + words;
}

} // namespace tarnwell::test
