#include "manual.h"

#include "columns.h"
#include "commands.h"
#include "options.h"
#include "usage.h"

#include <algorithm>

namespace tarnwell::host
{

namespace
{

// A backslash means something to the formatter, and a plain hyphen may become another sign.
std::u16string EscapedPiece(std::u16string_view text)
{
    std::u16string result;
    for (const char16_t unit : text)
    {
        if (unit == u'\\')
            result += u"\\e";
        else if (unit == u'-')
            result += u"\\-";
        else
            result += unit;
    }
    return result;
}

// The formatter doesn't know where lines of Japanese may end, and a point or a quote at the
// beginning of a line means something to it.
std::u16string Escaped(std::u16string_view text)
{
    std::u16string result;
    if (text.starts_with(u'.') || text.starts_with(u'\''))
        result += u"\\&";
    bool mayEnd = false;
    while (!text.empty())
    {
        const std::u16string_view piece = NextPiece(text);
        text.remove_prefix(piece.size());
        const bool isBlank = piece[0] == u' ';
        if (mayEnd && !isBlank)
            result += u"\\:";
        result += EscapedPiece(piece);
        mayEnd = !isBlank;
    }
    return result;
}

std::u16string Bold(std::u16string_view text)
{
    return u"\\fB" + Escaped(text) + u"\\fR";
}

// Placeholders are slanted; brackets and dots aren't. Own options stay bold.
std::u16string Operands(std::u16string_view text)
{
    std::u16string result;
    while (!text.empty())
    {
        const auto end = std::find_if(text.begin(), text.end(), [](char16_t unit) {
            return unit == u'[' || unit == u']' || unit == u' ' || unit == u'.';
        });
        const std::u16string_view word(text.begin(), end);
        if (word.empty())
            result += text[0];
        else
            result += word[0] == u'-' ? Bold(word) : u"\\fI" + Escaped(word) + u"\\fR";
        text.remove_prefix(std::max<std::size_t>(word.size(), 1));
    }
    return result;
}

std::u16string Section(Word head)
{
    std::u16string text = Say(head);
    // As manual pages have it.
    for (char16_t& unit : text)
        unit = unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - u'a' + u'A') : unit;
    return u".SH \"" + text + u"\"\n";
}

std::u16string Paragraph(std::u16string_view what, Word explanation)
{
    return u".TP\n" + std::u16string(what) + u"\n" + Escaped(Say(explanation)) + u"\n";
}

std::u16string OptionParagraph(const Option& option, Word explanation)
{
    std::u16string form = Bold(option.name);
    if (option.other != nullptr)
        form += u", " + Bold(option.other);
    if (option.value != nullptr)
        form += u" \\fI" + Escaped(option.value) + u"\\fR";
    return Paragraph(form, explanation);
}

std::u16string CommandParagraph(const Command& command)
{
    std::u16string text =
        Paragraph(Bold(command.name) + u" " + Operands(command.operands), command.summary);
    if (command.more != Word::None)
        text += u".IP\n" + Escaped(Say(command.more)) + u"\n";
    if (command.own.empty())
        return text;
    text += u".RS\n";
    for (const OwnOption& own : command.own)
        text += OptionParagraph(*FindOption(own.name), own.help);
    return text + u".RE\n";
}

std::u16string Environment()
{
    return Section(Word::HeadEnvironment) +
           Paragraph(Bold(u"TARNWELL_MODULE"), Word::EnvironmentModule) +
           Paragraph(Bold(u"NO_COLOR"), Word::EnvironmentColour) +
           Paragraph(Bold(u"LC_ALL") + u", " + Bold(u"LC_MESSAGES") + u", " + Bold(u"LANG"),
                     Word::EnvironmentLocale);
}

std::u16string Examples()
{
    std::u16string text = Section(Word::HeadExamples);
    for (const Command& command : Commands())
    {
        for (const Example& example : command.examples)
            text += Paragraph(Bold(LineOf(example)), example.what);
    }
    return text;
}

} // namespace

std::u16string ManualPage()
{
    // The right edge is left ragged, as Japanese has few blanks to stretch.
    std::u16string text = u".TH TARNWELL\\-HOST 1 \"\" \"tarnwell " TARNWELL_VERSION "\"\n.ad l\n";
    text += Section(Word::HeadName) + u"tarnwell\\-host \\- " + Escaped(Say(Word::ProgramSummary)) +
            u"\n";
    text += Section(Word::HeadSynopsis) + Bold(u"tarnwell-host") +
            u" [\\fIOPTIONS\\fR] \\fICOMMAND\\fR\n";
    text += Section(Word::HeadDescription) + Escaped(Say(Word::ProgramDescription)) + u"\n";
    text += Section(Word::HeadCommands);
    for (const Command& command : Commands())
        text += CommandParagraph(command);
    text += Section(Word::HeadOptions);
    for (const Option& option : Options())
    {
        if (option.help != Word::None)
            text += OptionParagraph(option, option.help);
    }
    text += Section(Word::HeadAddresses) + Escaped(Say(Word::AddressesText)) + u"\n" +
            Section(Word::HeadExitCode) + Escaped(Say(Word::ExitCodeText)) + u"\n";
    return text + Environment() + Examples() + Section(Word::HeadSeeAlso) +
           u".BR git (1),\n.BR hg (1),\n.BR svn (1)\n";
}

} // namespace tarnwell::host
