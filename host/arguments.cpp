#include "arguments.h"

#include "options.h"
#include "times.h"

#include <algorithm>

namespace tarnwell::host
{

namespace
{

bool IsNumber(std::u16string_view text)
{
    return !text.empty() && std::all_of(text.begin(), text.end(),
                                        [](char16_t unit) { return unit >= u'0' && unit <= u'9'; });
}

class Parser
{
public:
    explicit Parser(const std::vector<std::u16string>& arguments) : arguments_(arguments) {}

    CommandLine Parse()
    {
        while (next_ < arguments_.size())
            Take(arguments_[next_++]);
        if (line_.language && *line_.language != u"en" && *line_.language != u"ja")
            Wrong({Word::WrongLanguage, {}});
        for (const auto& [name, value] :
             {std::pair(u"-n", &line_.count), std::pair(u"--skip", &line_.skip)})
        {
            if (*value && !IsNumber(**value))
                Wrong({Word::WrongCount, {name, **value}});
        }
        for (const auto& [name, value] :
             {std::pair(u"--since", &line_.since), std::pair(u"--until", &line_.until)})
        {
            if (*value && !ParseTime(**value, DayPart::Begin))
                Wrong({Word::WrongTime, {name, **value}});
        }
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
            Wrong({Word::NoSuchOption, {argument}});
    }

    // The first thing is told.
    void Wrong(Saying text)
    {
        if (!line_.wrong)
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
        const Option* const option = FindOption(argument);
        if (option == nullptr || option->value != nullptr)
            return false;
        Give(*option, {});
        return true;
    }

    // "--name value" or "--name=value".
    bool TakeSetting(const std::u16string& argument)
    {
        const std::size_t equals = argument.find(u'=');
        const std::u16string name = argument.substr(0, equals);
        const Option* const option = FindOption(name);
        if (option == nullptr || option->value == nullptr)
            return false;
        Give(*option, ValueOf(argument, name, equals));
        return true;
    }

    void Give(const Option& option, const std::u16string& value)
    {
        if (option.help == Word::None)
            line_.own.emplace_back(option.name);
        option.take(line_, value);
    }

    std::u16string ValueOf(const std::u16string& argument, const std::u16string& name,
                           std::size_t equals)
    {
        if (equals != std::u16string::npos)
            return argument.substr(equals + 1);
        if (next_ < arguments_.size())
            return arguments_[next_++];
        Wrong({Word::ValueMissing, {name}});
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
