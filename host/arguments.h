// The command line.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace tarnwell::host
{

// A command line that makes no sense. The text is UTF-8.
struct UsageError : std::runtime_error
{
    using std::runtime_error::runtime_error;
};

struct CommandLine
{
    std::optional<std::u16string> module;
    std::optional<std::u16string> language;
    std::optional<std::u16string> user;
    std::optional<std::u16string> password;
    std::optional<std::u16string> server;
    bool noCredentials = false;
    bool json = false;
    bool streams = false;
    bool yes = false;
    bool parents = false;
    bool recursive = false;
    bool help = false;
    // Names that a comparison of folders leaves out; none given: those that version control keeps.
    std::optional<std::vector<std::u16string>> exclude;

    // What is wrong with the options, in UTF-8; empty if nothing is. The rest is read all the same,
    // since it says how to tell.
    std::string wrong;

    // The command, and what follows it.
    std::u16string command;
    std::vector<std::u16string> operands;
};

// Options may stand anywhere; "--" ends them. The command isn't looked at.
CommandLine ParseArguments(const std::vector<std::u16string>& arguments);

} // namespace tarnwell::host
