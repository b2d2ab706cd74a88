// The stand-in's command line, taken as strictly as the module has to write it.
#pragma once

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
    std::string command;
    std::string target; // the file that "print" writes
    std::string spec;
};

// Options in another order, others, and missing ones are a Failure.
Call ParseCall(const std::vector<std::string>& arguments);

} // namespace tarnwell::test::perforce
