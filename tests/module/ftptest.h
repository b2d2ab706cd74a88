// The FTP file system of the finished module on a server of the test.
#pragma once

#include "module/systemtest.h"
#include "support/fakeprogress.h"

namespace tarnwell::test
{

class FtpModuleTest : public SystemTest
{
protected:
    FtpModuleTest();

    // From now on, addresses lead to this folder of this server, and the host knows its user.
    void Use(const std::u16string& server, const std::u16string& folder = {});

    // The port in an address only tells servers apart; what is connected to is what the host says.
    std::u16string Address(const std::u16string& path = {}) const;
    std::vector<std::u16string> Names(const std::u16string& path) const;
    Outcome Put(const std::u16string& path, std::string_view bytes) const;
    Outcome Delete(const std::u16string& path, bool recursive = false) const;
    Outcome Create(const std::u16string& path, bool recursive = false) const;
    Outcome Copy(const std::u16string& from, const std::u16string& to,
                 ICopyProgress* progress = nullptr) const;
    // Whether there is such a file, which must then be named so.
    Outcome Find(const std::u16string& path) const;

private:
    std::u16string base_;
};

} // namespace tarnwell::test
