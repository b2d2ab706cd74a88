// Stands in for a version-control client where the real one can't be run, under Wine: has it run by
// the server of with-clients, and passes on what it prints. The name of the file tells the client.
#include "relay/client/asked.h"
#include "relay/client/run.h"

#include <cstdio>
#include <exception>
#include <stdexcept>
#include <thread>

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

// To its end, which is told as well. Ends with the process, if that is earlier.
void PassInput(const Connection& server)
{
    std::string block(65536, '\0');
    DWORD count = 0;
    do
    {
        if (!ReadFile(GetStdHandle(STD_INPUT_HANDLE), block.data(),
                      static_cast<DWORD>(block.size()), &count, nullptr))
            count = 0;
        server.SendText(std::string_view(block).substr(0, count));
    } while (count > 0);
}

int HaveItRun(const Asked& asked)
{
    const Connection server = Begin(asked);
    std::thread([&server] {
        try
        {
            PassInput(server);
        }
        catch (const std::exception&)
        {
            // The other direction finds out.
        }
    }).detach();
    for (;;)
    {
        const std::string kind = server.Receive(1);
        const std::string bytes = server.ReceiveText();
        if (kind == "x")
        {
            // At once: the input may go on, and its thread with it, which may hold any lock.
            TerminateProcess(GetCurrentProcess(), static_cast<UINT>(std::stoi(bytes)));
        }
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
