#include "support/clients.h"

#include <tarnwell/text.h>

#include <iterator>
#include <sstream>
#include <stdexcept>

namespace tarnwell::test
{

std::string RunClient(const std::string& client, const std::vector<std::string>& arguments,
                      const std::filesystem::path& folder,
                      const std::vector<std::pair<std::string, std::string>>& variables)
{
    ProcessCall call{.environment = variables, .folder = folder};
    std::string line = client;
    for (const std::string& argument : arguments)
    {
        call.arguments.push_back(DecodeName(argument));
        line += " " + argument;
    }
    ProcessRun run = RunClient(client, call);
    if (run.exitCode != 0)
        throw std::runtime_error(line + ": " + run.output + run.errors);
    if (run.output.ends_with('\n'))
        run.output.pop_back();
    return run.output;
}

std::vector<std::string> Words(std::string_view text)
{
    std::istringstream stream{std::string(text)};
    return {std::istream_iterator<std::string>(stream), {}};
}

void ClientTest::SetUp()
{
    if (const std::string why = WhyNoClients(); !why.empty())
        GTEST_SKIP() << why;
}

} // namespace tarnwell::test
