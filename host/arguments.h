// The command line.
#pragma once

#include "words.h"

#include <optional>
#include <string>
#include <vector>

namespace tarnwell::host
{

// A command line that makes no sense.
struct UsageError
{
    Saying text;
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
    bool prescribed = false;
    bool follow = false;
    bool workingCopy = false;
    bool help = false;
    bool version = false;
    bool man = false;
    bool completion = false;
    // A number in digits; it may be larger than any type.
    std::optional<std::u16string> count;
    std::optional<std::u16string> skip;
    // Times that the program can read.
    std::optional<std::u16string> since;
    std::optional<std::u16string> until;
    // Names that a comparison of folders leaves out; none given: those that version control keeps.
    std::optional<std::vector<std::u16string>> exclude;

    // The names of those options that only some commands take.
    std::vector<std::u16string_view> own;

    // What is wrong with the options, if anything is. The rest is read all the same, since it says
    // how to tell.
    std::optional<Saying> wrong;

    // The command, and what follows it.
    std::u16string command;
    std::vector<std::u16string> operands;
};

// Options may stand anywhere; "--" ends them. The command isn't looked at.
CommandLine ParseArguments(const std::vector<std::u16string>& arguments);

} // namespace tarnwell::host
