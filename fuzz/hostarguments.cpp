// Any command line of the sample host, and any text as an address.
#include "address.h"
#include "arguments.h"
#include "support/target.h"
#include "system.h"

#include <tarnwell/text.h>

#include <algorithm>

namespace tarnwell::fuzz
{

namespace
{

using Texts = std::vector<std::u16string>;

// Line feeds stand between the arguments.
Texts ArgumentsIn(std::u16string_view text)
{
    Texts arguments;
    for (;;)
    {
        const std::size_t end = text.find(u'\n');
        arguments.emplace_back(text.substr(0, end));
        if (end == std::u16string_view::npos)
            return arguments;
        text.remove_prefix(end + 1);
    }
}

void CheckArguments(const Texts& arguments)
{
    const host::CommandLine line = host::ParseArguments(arguments);
    Expect(line.operands.size() <= arguments.size(), "an operand is an argument");
    for (const std::u16string& operand : line.operands)
        Expect(std::find(arguments.begin(), arguments.end(), operand) != arguments.end(),
               "an operand is an argument");

    // Behind the end of the options nothing is one.
    Texts operands{u"--", u"command"};
    operands.insert(operands.end(), arguments.begin(), arguments.end());
    const host::CommandLine plain = host::ParseArguments(operands);
    Expect(plain.operands == arguments && plain.command == u"command" && !plain.wrong,
           "all that follows \"--\" are operands");
}

void CheckAddress(const std::u16string& text)
{
    try
    {
        const host::Address address = host::ParseAddress(text);
        if (address.kind->hasFolders)
        {
            Expect(address.text == text, "an address stays as it is");
            return;
        }
        const std::size_t colon = address.text.find(u':');
        Expect(text.substr(0, colon + 1) == address.text.substr(0, colon + 1), "the scheme stays");
        Expect(address.text.substr(colon + 1, 2) == u"//", "a path follows two slashes");
        Expect(host::ParseAddress(address.text).text == address.text, "what is whole stays so");
        const std::size_t marker = text.rfind(u'#');
        if (marker != std::u16string::npos)
            Expect(address.text.ends_with(text.substr(marker)), "the revision stays");
    }
    catch (const host::UsageError&)
    {
        Expect(text.find(u"://") != std::u16string::npos, "only foreign schemes are refused");
    }
}

} // namespace

void Try(std::string_view bytes)
{
    // No argument or path has one.
    std::u16string text = DecodeName(bytes);
    std::erase(text, u'\0');
    const Texts arguments = ArgumentsIn(text);
    CheckArguments(arguments);
    for (const std::u16string& argument : arguments)
        CheckAddress(argument);
}

} // namespace tarnwell::fuzz
