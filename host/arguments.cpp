#include "arguments.h"

#include "text16.h"

namespace tarnwell::host
{

namespace
{

struct Switch
{
    const char16_t* name;
    bool CommandLine::*member;
};

const Switch switches[] = {
    {u"--json", &CommandLine::json},       {u"--no-credentials", &CommandLine::noCredentials},
    {u"--streams", &CommandLine::streams}, {u"--yes", &CommandLine::yes},
    {u"-p", &CommandLine::parents},        {u"-r", &CommandLine::recursive},
    {u"--help", &CommandLine::help},       {u"-h", &CommandLine::help},
};

struct Setting
{
    const char16_t* name;
    std::optional<std::u16string> CommandLine::*member;
};

const Setting settings[] = {
    {u"--module", &CommandLine::module}, {u"--lang", &CommandLine::language},
    {u"--user", &CommandLine::user},     {u"--password", &CommandLine::password},
    {u"--server", &CommandLine::server},
};

class Parser
{
public:
    explicit Parser(const std::vector<std::u16string>& arguments) : arguments_(arguments) {}

    CommandLine Parse()
    {
        while (next_ < arguments_.size())
            Take(arguments_[next_++]);
        if (line_.language && *line_.language != u"en" && *line_.language != u"ja")
            throw UsageError("--lang is \"en\" or \"ja\".");
        return line_;
    }

private:
    void Take(const std::u16string& argument)
    {
        // A lone "-" is an operand: standard input.
        const bool isOption = !optionsEnded_ && argument.size() > 1 && argument[0] == u'-';
        if (!isOption)
            TakeOperand(argument);
        else if (argument == u"--")
            optionsEnded_ = true;
        else if (!TakeSwitch(argument) && !TakeSetting(argument))
            throw UsageError("There is no option \"" + ToUtf8(argument) + "\".");
    }

    void TakeOperand(const std::u16string& argument)
    {
        if (commandSeen_)
            line_.operands.push_back(argument);
        else
            line_.command = argument;
        commandSeen_ = true;
    }

    bool TakeSwitch(const std::u16string& argument)
    {
        for (const Switch& row : switches)
        {
            if (argument == row.name)
            {
                line_.*row.member = true;
                return true;
            }
        }
        return false;
    }

    // "--name value" or "--name=value".
    bool TakeSetting(const std::u16string& argument)
    {
        const std::size_t equals = argument.find(u'=');
        const std::u16string name = argument.substr(0, equals);
        for (const Setting& row : settings)
        {
            if (name != row.name)
                continue;
            if (equals != std::u16string::npos)
                line_.*row.member = argument.substr(equals + 1);
            else if (next_ < arguments_.size())
                line_.*row.member = arguments_[next_++];
            else
                throw UsageError("The option \"" + ToUtf8(name) + "\" needs a value.");
            return true;
        }
        return false;
    }

    const std::vector<std::u16string>& arguments_;
    std::size_t next_ = 0;
    bool optionsEnded_ = false;
    bool commandSeen_ = false;
    CommandLine line_;
};

} // namespace

CommandLine ParseArguments(const std::vector<std::u16string>& arguments)
{
    return Parser(arguments).Parse();
}

} // namespace tarnwell::host
