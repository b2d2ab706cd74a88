// A Subversion server for as long as it is measured.
#pragma once

#include <string>
#include <sys/types.h>

namespace tarnwell::bench
{

// Serves the folder to everybody on this machine, for reading.
class SvnServer
{
public:
    explicit SvnServer(const std::string& folder);
    SvnServer(const SvnServer&) = delete;
    SvnServer& operator=(const SvnServer&) = delete;
    ~SvnServer();

    // The host's name and port.
    std::string Place() const;

private:
    int port_;
    pid_t process_;
};

} // namespace tarnwell::bench
