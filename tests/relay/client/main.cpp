// Stands in for a version-control client where the real one can't be run, under Wine: has it run by
// the server of with-clients, and passes on what it prints. The name of the file tells the client.
#include "relay/client/asked.h"
#include "relay/client/connection.h"

#include <cstdio>
#include <exception>
#include <stdexcept>

// Arguments with "*" or "?" are no patterns to expand here.
extern "C" int _dowildcard;
int _dowildcard = 0;

namespace tarnwell::relay
{

namespace
{

// A failure of the relay itself. No client has it.
constexpr int relayFailed = 200;

void Write(DWORD stream, std::string_view bytes)
{
    while (!bytes.empty())
    {
        DWORD count = 0;
        if (!WriteFile(GetStdHandle(stream), bytes.data(), static_cast<DWORD>(bytes.size()), &count,
                       nullptr))
            throw std::runtime_error("nobody takes the output");
        bytes.remove_prefix(count);
    }
}

Connection ConnectedFor(const Asked& asked)
{
    const std::string port = ValueOf(asked, "TARNWELL_RELAY_PORT");
    if (port.empty())
        throw std::runtime_error("no server: run the tests by tests/relay/with-clients");
    return Connection(static_cast<unsigned short>(std::stoi(port)));
}

int HaveItRun(const Asked& asked)
{
    const Connection server = ConnectedFor(asked);
    server.SendText(ValueOf(asked, "TARNWELL_RELAY_KEY"));
    server.SendList(asked.client);
    server.SendList({asked.folder});
    server.SendList(asked.environment);
    for (;;)
    {
        const std::string kind = server.Receive(1);
        const std::string bytes = server.ReceiveText();
        if (kind == "x")
            return std::stoi(bytes);
        Write(kind == "o" ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE, bytes);
    }
}

} // namespace

} // namespace tarnwell::relay

int wmain(int, wchar_t** arguments)
{
    using namespace tarnwell::relay;
    try
    {
        const Asked asked = AskedOf(arguments);
        if (const std::string file = ValueOf(asked, "TARNWELL_RELAY_RECORD"); !file.empty())
            Record(asked, file);
        return HaveItRun(asked);
    }
    catch (const std::exception& failure)
    {
        std::fprintf(stderr, "relay: %s\n", failure.what());
        return relayFailed;
    }
}
