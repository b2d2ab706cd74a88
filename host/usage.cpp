#include "usage.h"

#include "columns.h"
#include "options.h"
#include "text16.h"

#include <algorithm>

namespace tarnwell::host
{

namespace
{

inline constexpr std::size_t formWidth = 32;
inline constexpr std::size_t optionWidth = 20;

const Command& Needed(const std::u16string& name)
{
    const Command* const command = FindCommand(name);
    if (command == nullptr)
        throw UsageError{{Word::NoSuchCommand, {name}}};
    return *command;
}

std::u16string Heading(Word word)
{
    return Say(word) + u":\n";
}

// What is explained, and behind it, or below it if it is long, the explanation.
std::u16string Explained(std::u16string_view form, std::size_t formColumns,
                         std::u16string_view help, std::size_t width)
{
    const std::size_t column = formColumns + 3;
    std::u16string text = u"  " + LeftAligned(form, formColumns);
    if (ColumnsOf(form) > formColumns)
        text += u"\n" + std::u16string(column, u' ');
    else
        text += u' ';
    return text + Wrapped(help, width, column) + u"\n";
}

std::u16string FormOf(const Option& option)
{
    std::u16string form = option.name;
    if (option.other != nullptr)
        form += u", " + std::u16string(option.other);
    if (option.value != nullptr)
        form += u" " + std::u16string(option.value);
    return form;
}

std::u16string OptionsText(std::size_t width)
{
    std::u16string text = Heading(Word::HeadOptions);
    for (const Option& option : Options())
    {
        if (option.help != Word::None)
            text += Explained(FormOf(option), optionWidth, Say(option.help), width);
    }
    return text;
}

std::u16string ProgramHelp(std::size_t width)
{
    std::u16string text = Say(Word::HeadUsage) + u": tarnwell-host [OPTIONS] COMMAND\n\n" +
                          Heading(Word::HeadCommands);
    for (const Command& command : Commands())
        text += Explained(std::u16string(command.name) + u" " + command.operands, formWidth,
                          Say(command.summary), width);
    text += Wrapped(Say(Word::MoreHelp), width, 0) + u"\n\n" + OptionsText(width) + u"\n";
    for (const auto& [head, body] : {std::pair(Word::HeadAddresses, Word::AddressesText),
                                     std::pair(Word::HeadExitCode, Word::ExitCodeText)})
        text += Wrapped(Say(head) + u": " + Say(body), width, 0) + u"\n";
    return text;
}

std::u16string CommandHelp(const Command& command, std::size_t width)
{
    std::u16string text = Say(Word::HeadUsage) + u": tarnwell-host [OPTIONS] " + command.name +
                          u" " + command.operands + u"\n  " +
                          Wrapped(Say(command.summary), width, 2) + u"\n";
    if (command.more != Word::None)
        text += u"\n" + Wrapped(Say(command.more), width, 0) + u"\n";
    text += u"\n" + Heading(Word::HeadOptions);
    for (const OwnOption& own : command.own)
        text += Explained(FormOf(*FindOption(own.name)), optionWidth, Say(own.help), width);
    text +=
        u"  " + Wrapped(Say(Word::OtherOptions), width, 2) + u"\n\n" + Heading(Word::HeadExamples);
    for (const Example& example : command.examples)
        text +=
            u"  " + LineOf(example) + u"\n      " + Wrapped(Say(example.what), width, 6) + u"\n";
    return text;
}

} // namespace

std::u16string HelpText(const CommandLine& line, std::size_t width)
{
    std::u16string name = line.command;
    if (name == u"help")
        name = line.operands.empty() ? u"" : line.operands[0];
    return name.empty() ? ProgramHelp(width) : CommandHelp(Needed(name), width);
}

std::u16string VersionText()
{
    return u"tarnwell-host " TARNWELL_VERSION "\n";
}

const Command& CommandOf(const CommandLine& line)
{
    if (line.command.empty())
        throw UsageError{{Word::CommandMissing, {}}};
    const Command& command = Needed(line.command);
    if (line.operands.size() < command.fewest)
        throw UsageError{{Word::OperandsMissing, {line.command, command.operands}}};
    if (line.operands.size() > command.most)
        throw UsageError{{Word::OperandsTooMany, {line.command, Decimal(command.most)}}};
    for (const std::u16string_view name : line.own)
    {
        if (std::none_of(command.own.begin(), command.own.end(),
                         [&](const OwnOption& own) { return name == own.name; }))
            throw UsageError{{Word::NotItsOption, {line.command, std::u16string(name)}}};
    }
    return command;
}

std::u16string LineOf(const Example& example)
{
    const std::u16string line = example.line;
    return line.find(u'|') == std::u16string::npos ? u"tarnwell-host " + line : line;
}

} // namespace tarnwell::host
