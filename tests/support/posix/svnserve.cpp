#include "support/posix/svnserve.h"

namespace tarnwell::test
{
namespace
{

std::vector<std::string> Command(const SvnRepository& repository, const std::string& anonymous,
                                 const std::string& password, int port)
{
    repository.Configure("svnserve.conf", "[general]\nanon-access = " + anonymous +
                                              "\nauth-access = read\npassword-db = passwd\n"
                                              "realm = tests\n");
    repository.Configure("passwd", "[users]\nann = " + password + "\n");
    return {"svnserve",
            "--daemon",
            "--foreground",
            "--listen-host=127.0.0.1",
            "--listen-port=" + std::to_string(port),
            "--root=" + repository.Path().string()};
}

} // namespace

SvnServe::SvnServe(const SvnRepository& repository, const std::string& anonymous,
                   const std::string& password)
    : process_(Command(repository, anonymous, password, port_), port_)
{
}

std::u16string SvnServe::Host() const
{
    const std::string text = "127.0.0.1:" + std::to_string(port_);
    return {text.begin(), text.end()};
}

} // namespace tarnwell::test
