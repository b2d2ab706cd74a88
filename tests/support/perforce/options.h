// The stand-in's command line, taken as strictly as the module has to write it.
#pragma once

#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace tarnwell::test::perforce
{

// What the client says on its error stream, and its exit code.
struct Failure : std::runtime_error
{
    Failure(const std::string& text, int code) : std::runtime_error(text), exitCode(code) {}

    int exitCode;
};

struct Call
{
    std::string user; // empty: not given
    std::string password;
    std::string port;
    std::string workspace;
    std::string command;
    // What stands behind those of its options that want something, by the option.
    std::map<std::string, std::string> values;
    std::string spec; // empty where the command takes none
};

// Options in another order, others, and missing ones are a Failure.
Call ParseCall(const std::vector<std::string>& arguments);

} // namespace tarnwell::test::perforce
