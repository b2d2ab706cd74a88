#include "support/clients.h"

#include "support/environmentvalue.h"
#include "support/process.h"

#include <tarnwell/text.h>

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

[[maybe_unused]] testing::Environment* const registered =
    testing::AddGlobalTestEnvironment(new StandInsOnPath());

} // namespace

std::string WhyNoClients()
{
    if (EnvironmentValue::Of("TARNWELL_RELAY_PORT"))
        return {};
    return "no clients: not run by tests/relay/with-clients";
}

} // namespace tarnwell::test
