#include "support/clients.h"

#include "support/environmentvalue.h"
#include "support/tempfolder.h"

#include <optional>

namespace tarnwell::test
{
namespace
{

struct Settings
{
    TempFolder folder;
    EnvironmentValue home{"HOME", folder.Path().c_str()};
    EnvironmentValue configuration{"XDG_CONFIG_HOME", nullptr};
    EnvironmentValue system{"GIT_CONFIG_NOSYSTEM", "1"};
};

class NoSettings : public testing::Environment
{
public:
    void SetUp() override
    {
        set_.emplace();
    }
    void TearDown() override
    {
        set_.reset();
    }

private:
    std::optional<Settings> set_;
};

[[maybe_unused]] testing::Environment* const registered =
    testing::AddGlobalTestEnvironment(new NoSettings());

} // namespace

std::string WhyNoClients()
{
    return {};
}

ProcessRun RunClient(const std::string& client, const ProcessCall& call)
{
    return RunProcess(client, call);
}

} // namespace tarnwell::test
