// The real version-control clients, as tests run them to make what they need. In a test program
// that uses them, they find no settings of its user's.
#pragma once

#include "support/process.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tarnwell::test
{

// Empty if there are clients. Under Wine they want tests/relay/with-clients around the tests.
std::string WhyNoClients();

// Runs a client in the folder; what it prints, without the line feed at its end. Throws if it
// fails. The variables are in addition to those of the test.
std::string RunClient(const std::string& client, const std::vector<std::string>& arguments,
                      const std::filesystem::path& folder,
                      const std::vector<std::pair<std::string, std::string>>& variables = {});

// The same with all that a program can be told and all that it answers; it may fail. Under Wine no
// program is started there for it.
ProcessRun RunClient(const std::string& client, const ProcessCall& call);

// The parts of the text between blanks, for arguments that hold none.
std::vector<std::string> Words(std::string_view text);

// Tests that don't come to anything without clients.
class ClientTest : public testing::Test
{
protected:
    void SetUp() override;
};

} // namespace tarnwell::test
