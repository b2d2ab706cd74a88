#include "support/clients.h"

#include "relay/client/run.h"
#include "support/environmentvalue.h"

#include <tarnwell/text.h>

#include <forward_list>
#include <optional>

namespace tarnwell::test
{
namespace
{

class StandInsOnPath : public testing::Environment
{
public:
    void SetUp() override
    {
        const std::u16string folder = (ThisProgram().parent_path() / "clients").u16string();
        const std::string others = EnvironmentValue::Of("PATH").value_or("");
        path_.emplace("PATH", (EncodeName(folder).value() + ";" + others).c_str());
    }
    void TearDown() override
    {
        path_.reset();
    }

private:
    std::optional<EnvironmentValue> path_;
};

std::filesystem::path FolderOf(const ProcessCall& call)
{
    return call.folder.empty() ? std::filesystem::current_path() : call.folder;
}

[[maybe_unused]] testing::Environment* const registered =
    testing::AddGlobalTestEnvironment(new StandInsOnPath());

} // namespace

std::string WhyNoClients()
{
    if (EnvironmentValue::Of("TARNWELL_RELAY_PORT"))
        return {};
    return "no clients: not run by tests/relay/with-clients";
}

// By the server that the stand-ins would ask.
ProcessRun RunClient(const std::string& client, const ProcessCall& call)
{
    std::forward_list<EnvironmentValue> variables;
    for (const auto& [name, value] : call.environment)
        variables.emplace_front(name.c_str(), value.empty() ? nullptr : value.c_str());
    relay::Asked asked{.commandLine = {},
                       .client = {client},
                       .folder = EncodeName(FolderOf(call).u16string()).value(),
                       .environment = relay::Environment()};
    for (const std::u16string& argument : call.arguments)
        asked.client.push_back(EncodeName(argument).value());
    const relay::Connection server = relay::Begin(asked);
    if (!call.input.empty())
        server.SendText(call.input);
    server.SendText({});
    ProcessRun run{};
    for (;;)
    {
        const std::string kind = server.Receive(1);
        const std::string bytes = server.ReceiveText();
        if (kind == "x")
        {
            run.exitCode = std::stoi(bytes);
            return run;
        }
        (kind == "o" ? run.output : run.errors) += bytes;
    }
}

} // namespace tarnwell::test
