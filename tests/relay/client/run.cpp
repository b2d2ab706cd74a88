#include "relay/client/run.h"

#include <stdexcept>

namespace tarnwell::relay
{

Connection Begin(const Asked& asked)
{
    const std::string port = ValueOf(asked, "TARNWELL_RELAY_PORT");
    if (port.empty())
        throw std::runtime_error("no server: run the tests by tests/relay/with-clients");
    Connection server(static_cast<unsigned short>(std::stoi(port)));
    server.SendText(ValueOf(asked, "TARNWELL_RELAY_KEY"));
    server.SendList(asked.client);
    server.SendList({asked.folder});
    server.SendList(asked.environment);
    return server;
}

} // namespace tarnwell::relay
