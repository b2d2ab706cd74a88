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
    void (*take)(CommandLine& line, std::u16string value);
};

// The last one counts.
template <std::optional<std::u16string> CommandLine::*member>
void Set(CommandLine& line, std::u16string value)
{
    line.*member = std::move(value);
}

// All count.
void AddExcluded(CommandLine& line, std::u16string value)
{
    if (!line.exclude)
        line.exclude.emplace();
    line.exclude->push_back(std::move(value));
}

const Setting settings[] = {
    {u"--module", Set<&CommandLine::module>}, {u"--lang", Set<&CommandLine::language>},
    {u"--user", Set<&CommandLine::user>},     {u"--password", Set<&CommandLine::password>},
    {u"--server", Set<&CommandLine::server>}, {u"--exclude", AddExcluded},
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
            Wrong("--lang is \"en\" or \"ja\".");
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
            Wrong("There is no option \"" + ToUtf8(argument) + "\".");
    }

    // The first thing is told.
    void Wrong(std::string text)
    {
        if (line_.wrong.empty())
            line_.wrong = std::move(text);
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
            row.take(line_, ValueOf(argument, name, equals));
            return true;
        }
        return false;
    }

    std::u16string ValueOf(const std::u16string& argument, const std::u16string& name,
                           std::size_t equals)
    {
        if (equals != std::u16string::npos)
            return argument.substr(equals + 1);
        if (next_ < arguments_.size())
            return arguments_[next_++];
        Wrong("The option \"" + ToUtf8(name) + "\" needs a value.");
        return {};
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
