#include "support/perforce/failures.h"

#include "support/perforce/options.h"

namespace tarnwell::test::perforce
{

namespace
{

constexpr Way ways[] = {
    {"password", "Perforce password (P4PASSWD) invalid or unset.\n", 1, false},
    {"newuser", "Can't create a new user - over license quota.\n", 1, false},
    {"refused",
     "Perforce client error:\n\tConnect to server failed; check $P4PORT.\n\tTCP connect to "
     "127.0.0.1:1 failed.\n\tconnect: 127.0.0.1:1: Connection refused\n",
     1, false},
    {"expired", "Your session has expired, please login again.\n", 1, false},
    {"invalid", "Password invalid.\n", 1, false},
    {"workspace", "Client 'ws' unknown - use 'client' command to create it.\n", 1, false},
    {"nofile", "//depot/x: no such file or directory\n", 0, false},
    {"nofiles", "//depot/x - no such file(s).\n", 0, false},
    {"nofilesfailed", "//depot/x - no such file(s).\n", 1, false},
    {"nofilesbeside", "//depot/x - no such file(s).\n", 1, true},
    {"warning", "Warning: the server is about to be shut down.\n", 0, true},
    {"late", "Fatal client error; disconnecting!\n", 1, true},
    {"silent", "", 1, false},
};

} // namespace

const Way& WayNamed(const std::string& name)
{
    for (const Way& way : ways)
    {
        if (name == way.name)
            return way;
    }
    throw std::runtime_error("there is no way to fail called \"" + name + "\"");
}

void Fail(const Way& way)
{
    throw Failure(way.text, way.exitCode);
}

} // namespace tarnwell::test::perforce
